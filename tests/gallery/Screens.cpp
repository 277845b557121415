#include "gallery/Screens.h"

#include "app/HelperApplication.h"
#include "controls/EnumTextButton.h"
#include "controls/OpenPath.h"
#include "controls/PopupWidget.h"
#include "controls/TouchNumKeyboard.h"
#include "gallery/GalleryItems.h"
#include "gallery/Installation.h"
#include "gallery/Snapshots.h"
#include "minibar/RemoteMiniBarWindow.h"
#include "modeditors/RemoteModEditorHost.h"
#include "support/Waiting.h"

#include <QApplication>
#include <QDialog>
#include <QFileDialog>
#include <QListView>
#include <QMenu>
#include <QPushButton>
#include <QScreen>
#include <QTableWidget>
#include <QTest>
#include <QTimer>

using Controls::TouchNumKeyboard;

namespace {

enum Place { Rf, Frequency, Level, Sweep, Mod };

constexpr char sweepPopup[] = "miniBarHelperSweepPopup";
constexpr char modPopup[] = "miniBarHelperModPopup";

constexpr QPoint anchor(1240, 40);

template <typename Widget>
Widget* visibleChild(const QWidget* parent)
{
    const auto candidates = parent->findChildren<Widget*>();
    for (Widget* candidate : candidates) {
        if (candidate->isVisible())
            return candidate;
    }
    return nullptr;
}

// Everything that is under way in the window has come to an end: layouts, deferred deletions.
// Everything that the X server has to tell about what was asked of it so far has been heard.
void settle()
{
    QGuiApplication::sync();
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

// What the X server tells late of a size that is over makes a window stand for a moment in one that it may
// not have.
bool hasItsSize(const QWidget* window)
{
    const QSize size = window->size();
    return size == size.expandedTo(window->minimumSize()).boundedTo(window->maximumSize());
}

// The probing of the listed files has come to an end, but for those that hold nothing.
bool isProbed(const QTableWidget* table)
{
    for (int row = 0; row < table->rowCount(); ++row) {
        const QTableWidgetItem* const name = table->item(row, 0);
        if (!name)
            return false;
        const bool hasFacts = name->data(Qt::UserRole).toString().endsWith(QLatin1String(".wav")) &&
                              name->text() != QLatin1String("broken");
        if (hasFacts && table->item(row, 1)->text() == QLatin1String("-"))
            return false;
    }
    return true;
}

} // namespace

Screens::Screens(Visitor visitor)
    : m_visitor(std::move(visitor))
{}

Screens::~Screens() = default;

void Screens::visit()
{
    visitMessage(); // comes before anything else of the product
    m_bar = std::make_unique<RemoteMiniBarWindow>();
    m_bar->setAnchorTopRight(anchor);
    visitBar();
    visitQuickKeyboards();
    visitSweep();
    visitMenu();
    visitEditors();
    visitFieldKeyboards();
    visitChooser();
    m_bar.reset();
}

void Screens::visitCorners()
{
    m_bar = std::make_unique<RemoteMiniBarWindow>();
    m_bar->showMiniBar();
    apply(Snapshots::frequencySweep());
    const QRect screen = m_bar->screen()->availableGeometry();
    visitCorner(QStringLiteral("top-left"), screen.topLeft());
    visitCorner(QStringLiteral("top-right"), screen.topRight());
    visitCorner(QStringLiteral("bottom-left"), screen.bottomLeft());
    visitCorner(QStringLiteral("bottom-right"), screen.bottomRight());
    m_bar.reset();
}

void Screens::visitCorner(const QString& name, const QPoint& topRight)
{
    const QString prefix = QStringLiteral("corner-") + name;
    expand(false);
    m_bar->setAnchorTopRight(topRight);
    expand(true);
    show(prefix, m_bar.get());
    visitKeyboard(prefix + QStringLiteral("-quick-keyboard"), barButton(Frequency), "1.2.");
    barButton(Sweep)->click();
    show(prefix + QStringLiteral("-sweep"), popup(sweepPopup));
    visitDropDown(prefix + QStringLiteral("-list"), inPopup<EnumTextButton>(sweepPopup, "btnMode"));
    visitKeyboard(prefix + QStringLiteral("-keyboard"), inPopup<QAbstractButton>(sweepPopup, "btnStepFreq"),
                  "0\r");
    closePopups();
    apply(Snapshots::busy());
    barButton(Mod)->click();
    show(prefix + QStringLiteral("-menu"), menu());
    menu()->close();
    settle();
}

// The bar

void Screens::visitBar()
{
    m_bar->showMiniBar();
    show(QStringLiteral("bar-collapsed-unknown"), m_bar.get());
    expand(true);
    show(QStringLiteral("bar-expanded-unknown"), m_bar.get());
    apply(Snapshots::unknownSweep());
    show(QStringLiteral("bar-expanded-off"), m_bar.get());
    apply(Snapshots::busy());
    show(QStringLiteral("bar-expanded-on"), m_bar.get());
    expand(false);
    show(QStringLiteral("bar-collapsed-on"), m_bar.get());
    apply(Snapshots::quiet());
    show(QStringLiteral("bar-collapsed-off"), m_bar.get());
    expand(true);
}

void Screens::visitQuickKeyboards()
{
    apply(Snapshots::busy());
    visitKeyboard(QStringLiteral("keyboard-frequency"), barButton(Frequency), "1.2.");
    visitKeyboard(QStringLiteral("keyboard-level"), barButton(Level), "2e1x");
}

// Popups

void Screens::visitSweep()
{
    apply(Snapshots::frequencySweep());
    barButton(Sweep)->click();
    show(QStringLiteral("sweep-frequency"), popup(sweepPopup));
    visitDropDown(QStringLiteral("list-sweep-type"), inPopup<EnumTextButton>(sweepPopup, "btnMode"));
    visitKeyboard(QStringLiteral("keyboard-time"),
                  inPopup<QAbstractButton>(sweepPopup, "btnDwellTime_Analog"), "0\r");
    apply(Snapshots::levelSweep());
    show(QStringLiteral("sweep-level"), popup(sweepPopup));
    apply(Snapshots::unknownSweep());
    show(QStringLiteral("sweep-unsupported"), popup(sweepPopup));
    apply(Snapshots::lockedSweep());
    show(QStringLiteral("sweep-locked"), popup(sweepPopup));
    closePopups();
}

void Screens::visitMenu()
{
    apply(Snapshots::busy());
    barButton(Mod)->click();
    show(QStringLiteral("menu"), menu());
    menu()->close();
    settle();
}

void Screens::visitEditors()
{
    apply(Snapshots::modulation(Installation::sampleFiles()));
    for (const GalleryItem& item : galleryItems()) {
        const QString screen = QString::fromUtf8(item.screen);
        openItem(screen);
        const auto* files = popup(modPopup)->findChild<QTableWidget*>(QStringLiteral("tableWidget"));
        if (files && !TestSupport::waitUntil([files] { return isProbed(files); }))
            qFatal("the files are not probed");
        show(QStringLiteral("editor-") + screen, popup(modPopup));
        visitDropDowns(screen);
        closePopups();
    }
}

void Screens::visitDropDowns(const QString& editor)
{
    const auto pickers = popup(modPopup)->findChildren<EnumTextButton*>();
    for (EnumTextButton* picker : pickers) {
        if (picker->isVisible() && picker->isEnabled() && !picker->enums().isEmpty())
            visitDropDown(QStringLiteral("list-%1-%2").arg(editor, picker->objectName()), picker);
    }
}

void Screens::visitFieldKeyboards()
{
    openItem(QStringLiteral("digital"));
    visitKeyboard(QStringLiteral("keyboard-integer"), inPopup<QAbstractButton>(modPopup, "pn"), "3\r");
    visitKeyboard(QStringLiteral("keyboard-number"), inPopup<QAbstractButton>(modPopup, "filterAlpha"),
                  "2\r");
    closePopups();
}

void Screens::visitDropDown(const QString& name, EnumTextButton* button) const
{
    button->click();
    auto* const list = visibleChild<PopupWidget>(button->window());
    if (!list)
        qFatal("no list opens: %s", qPrintable(name));
    show(name, list);
    list->close();
    settle();
}

void Screens::visitKeyboard(const QString& name, QAbstractButton* button, const char* refusedKeys) const
{
    button->click();
    auto* const keyboard = visibleChild<TouchNumKeyboard>(button->window());
    if (!keyboard)
        qFatal("no keyboard opens: %s", qPrintable(name));
    show(name, keyboard);
    for (const char* key = refusedKeys; *key != '\0'; ++key) {
        if (*key == '\r')
            QTest::keyClick(keyboard, Qt::Key_Return);
        else
            QTest::keyClick(keyboard, *key);
    }
    show(name + QStringLiteral("-refused"), keyboard);
    keyboard->reject();
    settle();
}

// Dialogs of their own

void Screens::visitChooser()
{
    openItem(QStringLiteral("playback-none"));
    const auto isListed = [](const QWidget* dialog) {
        const auto* files = dialog->findChild<QListView*>(QStringLiteral("listView"));
        return files && files->model()->rowCount(files->rootIndex()) > 1;
    };
    visitModal(QStringLiteral("chooser"), isListed, [this] {
        const QString caption = QCoreApplication::translate("RemoteArbPanel", "Select %1 file");
        (void)Controls::getOpenPath(Installation::sampleFiles(), false,
                                    caption.arg(QStringLiteral("WAV/ARB")),
                                    QCoreApplication::translate("RemoteArbPanel", "WAV Files (*.wav)"),
                                    inPopup<QWidget>(modPopup, "ArbPanel"));
    });
    closePopups();
}

void Screens::visitMessage()
{
    qApp->setStyleSheet(QString()); // it comes before there is one
    visitModal(
        QStringLiteral("message"), [](const QWidget*) { return true; },
        &HelperApplication::tellHowItIsStarted);
}

void Screens::visitModal(const QString& name, const std::function<bool(const QWidget*)>& isReady,
                         const std::function<void()>& open) const
{
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &poll, [&] {
        auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (!dialog || !isReady(dialog))
            return;
        poll.stop();
        show(name, dialog);
        dialog->reject();
    });
    poll.start(0);
    open();
    settle();
}

// Ways

void Screens::show(const QString& name, QWidget* shown) const
{
    if (!shown || !shown->isVisible())
        qFatal("does not show: %s", qPrintable(name));
    settle();
    if (!TestSupport::waitUntil([shown] { return hasItsSize(shown->window()); }))
        qFatal("has a size that it may not have: %s", qPrintable(name));
    m_visitor(name, shown);
}

void Screens::apply(const QJsonObject& snapshot) const
{
    m_bar->applySnapshot(snapshot);
}

void Screens::expand(bool expanded) const
{
    const auto toggles = m_bar->findChildren<QPushButton*>(QStringLiteral("miniBarToggleButton"));
    for (QPushButton* toggle : toggles) {
        if (toggle->isVisible() && (toggle->text() == QLatin1String("v")) == expanded) {
            toggle->click();
            return;
        }
    }
}

void Screens::openItem(const QString& screen) const
{
    const auto actions = menu()->actions();
    for (QAction* action : actions) {
        if (action->data().toString() == screen)
            action->trigger();
    }
    if (!popup(modPopup) || !popup(modPopup)->isVisible())
        qFatal("no popup opens: %s", qPrintable(screen));
}

void Screens::closePopups() const
{
    expand(false);
    expand(true);
    settle();
}

QMenu* Screens::menu() const
{
    return m_bar->findChild<QMenu*>(QStringLiteral("miniBarModMenu"));
}

QDialog* Screens::popup(const char* name) const
{
    return m_bar->findChild<QDialog*>(QLatin1String(name));
}

template <typename Widget>
Widget* Screens::inPopup(const char* popupName, const char* name) const
{
    return popup(popupName)->findChild<Widget*>(QLatin1String(name));
}

QAbstractButton* Screens::barButton(int place) const
{
    QList<QAbstractButton*> shown;
    const auto buttons = m_bar->findChildren<QAbstractButton*>(QStringLiteral("miniBarInfoButton"));
    for (QAbstractButton* button : buttons) {
        if (button->isVisible())
            shown.append(button);
    }
    std::sort(shown.begin(), shown.end(),
              [](const QWidget* left, const QWidget* right) { return left->y() < right->y(); });
    return shown.value(place);
}
