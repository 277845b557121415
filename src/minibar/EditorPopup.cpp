#include "minibar/EditorPopup.h"

#include "controls/ElidedLabel.h"
#include "controls/OverlayContainer.h"
#include "controls/PopupWidget.h"
#include "minibar/ScreenLayout.h"

#include <QDialog>
#include <QEvent>
#include <QGuiApplication>
#include <QLabel>
#include <QScreen>
#include <QVBoxLayout>
#include <QWindow>
#include <algorithm>

namespace {

constexpr int maximumWidth = 560;
constexpr int bottomMargin = 5;

QScreen* screenFor(const QRect& rect, const Placement::Screens& screens)
{
    for (int index : {screens.indexAt(rect.center()), screens.own, screens.primary}) {
        if (index >= 0)
            return QGuiApplication::screens().value(index);
    }
    return nullptr;
}

} // namespace

EditorPopup::EditorPopup(Names names, QWidget* bar)
    : m_names(std::move(names))
    , m_bar(bar)
{}

EditorPopup::~EditorPopup() = default;

void EditorPopup::build(const QString& title, const std::function<QWidget*(QDialog*)>& makeEditor)
{
    m_host = new QWidget(m_bar, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    m_host->setObjectName(m_names.overlayHost);
    m_host->setAttribute(Qt::WA_QuitOnClose, false);
    m_host->setAttribute(Qt::WA_AcceptTouchEvents, true);
    m_host->setAttribute(Qt::WA_TranslucentBackground, true);
    m_host->setAttribute(Qt::WA_NoSystemBackground, true);
    m_host->setStyleSheet(QStringLiteral("QWidget#%1 { background: transparent; }").arg(m_names.overlayHost));

    m_overlay = new Controls::OverlayContainer(m_host);
    m_overlay->setBlocksOutsideInput(true);
    m_overlay->setOutsideInputHandler([this] { pressedOutside(); });

    m_dialog = new QDialog(m_host);
    m_dialog->setObjectName(m_names.dialog);
    m_dialog->setModal(false);
    m_dialog->setAttribute(Qt::WA_QuitOnClose, false);
    m_dialog->setAttribute(Qt::WA_StyledBackground, true);
    m_dialog->installEventFilter(this);
    // Esc, or whatever else ends the dialog by itself.
    connect(m_dialog, &QDialog::finished, this, &EditorPopup::dismiss);

    auto* layout = new QVBoxLayout(m_dialog);
    layout->setContentsMargins(0, 0, 0, bottomMargin);
    layout->setSpacing(0);
    m_title = new Controls::ElidedLabel(m_dialog); // the style sheet leaves it one line
    setTitle(title);
    m_title->setObjectName(QStringLiteral("titleLabel"));
    m_title->setWordWrap(true);
    layout->addWidget(m_title);
    layout->addWidget(makeEditor(m_dialog));
}

void EditorPopup::setTitle(const QString& title)
{
    if (m_title->text() == title)
        return;
    m_title->setText(title);
    // For those who read the screen aloud.
    m_host->setWindowTitle(title);
    m_dialog->setAccessibleName(title);
}

void EditorPopup::setStyleSheet(const QString& styleSheet)
{
    if (m_dialog->styleSheet() != styleSheet)
        m_dialog->setStyleSheet(styleSheet);
}

void EditorPopup::open(QWidget* button, const QRect& bar, bool clampHeight)
{
    m_spot = {button, bar, clampHeight};
    button->installEventFilter(this);
    const Placement::Screens screens = currentScreens(m_bar);
    m_dialog->adjustSize();
    m_placed = wantedPlace(screens);
    QScreen* const screen = screenFor(m_placed, screens);
    if (!screen)
        return;
    m_open = true;
    m_host->winId(); // a native window, so that it can be put on the screen before it shows
    m_host->windowHandle()->setScreen(screen);
    m_host->setGeometry(screen->geometry());
    putDialog();
    m_overlay->setActiveDialog(m_dialog);
    m_host->show();
    m_host->raise();
    m_overlay->prepareForShow();
    m_dialog->show();
    m_dialog->raise();
}

QRect EditorPopup::wantedPlace(const Placement::Screens& screens) const
{
    const QWidget* const button = m_spot.button;
    const QPoint anchor =
        Placement::anchorBelow(QRect(button->mapTo(m_bar, QPoint(0, 0)), button->size()), m_spot.bar);
    const QRect available = Placement::screenRect(screens, anchor);
    QSize size = m_dialog->sizeHint().expandedTo(m_dialog->minimumSizeHint());
    size.setWidth(std::min(available.width(), maximumWidth));
    if (m_dialog->hasHeightForWidth()) // a sentence may need more lines now
        size.setHeight(std::max(size.height(), m_dialog->heightForWidth(size.width())));
    if (m_spot.clampHeight)
        size.setHeight(std::max(1, std::min(size.height(), available.height())));
    return Placement::popupRect(anchor, size, m_spot.bar, screens);
}

// In the overlay, which stands where its screen does.
void EditorPopup::putDialog()
{
    m_dialog->resize(m_placed.size());
    m_dialog->move(m_placed.topLeft() - m_host->windowHandle()->screen()->geometry().topLeft());
}

// An editor that is another one now, or shows one field more, gets the height that it needs. And where the
// bar had not got its size yet, which a window manager may tell late, its button moves.
bool EditorPopup::eventFilter(QObject* watched, QEvent* event)
{
    const bool grows = watched == m_dialog && event->type() == QEvent::LayoutRequest;
    const bool moves = watched == m_spot.button && event->type() == QEvent::Move;
    if (m_open && (grows || moves)) {
        m_spot.bar.setSize(m_bar->size());
        const QRect wanted = wantedPlace(currentScreens(m_bar));
        if (moves ? wanted != m_placed : wanted.size() != m_placed.size()) {
            m_placed = wanted;
            putDialog();
        }
    }
    return QObject::eventFilter(watched, event);
}

void EditorPopup::close()
{
    if (!m_open)
        return;
    m_open = false;
    emit closing();
    (void)closeDropDown();
    m_dialog->hide();
    m_overlay->setActiveDialog(nullptr);
    m_host->hide();
}

void EditorPopup::dismiss()
{
    // Before the popup goes, or else the window manager may give the keyboard to another program.
    if (m_host->isActiveWindow())
        m_bar->activateWindow();
    close();
}

bool EditorPopup::owns(const QObject* object) const
{
    for (; object; object = object->parent()) {
        if (object == m_host)
            return m_host != nullptr;
    }
    return false;
}

void EditorPopup::pressedOutside()
{
    if (m_open && !closeDropDown() && !m_dropDownJustClosed.isSet())
        dismiss();
}

void EditorPopup::dropDownChanged(PopupWidget* dropDown, bool visible)
{
    m_dropDownJustClosed.set();
    if (visible)
        m_dropDown = dropDown;
    else if (m_dropDown == dropDown)
        m_dropDown = nullptr;
}

bool EditorPopup::closeDropDown()
{
    if (!m_dropDown || !m_dropDown->isVisible())
        return false;
    m_dropDown->close();
    return true;
}
