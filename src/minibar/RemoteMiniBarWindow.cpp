#include "minibar/RemoteMiniBarWindow.h"

#include "controls/LabelButton.h"
#include "minibar/ApplicationTheme.h"
#include "minibar/BarPages.h"
#include "minibar/BarPopups.h"
#include "minibar/KeyboardConfig.h"
#include "minibar/Repolish.h"
#include "minibar/ScreenLayout.h"
#include "minibar/StyleSheets.h"
#include "minibar/Theme.h"

#include <QApplication>
#include <QPushButton>
#include <QScreen>
#include <QStackedLayout>
#include <QVBoxLayout>

namespace {

constexpr int outerMargin = 8;

QSize withMargins(const QWidget* page)
{
    return page->sizeHint().expandedTo(page->minimumSizeHint()) + QSize(2 * outerMargin, 2 * outerMargin);
}

} // namespace

RemoteMiniBarWindow::RemoteMiniBarWindow(QWidget* parent)
    : QWidget(parent)
    , m_presence(*this, [this] {
        hide();
        appear();
    })
{
    const bool light = readThemeSetting();
    applyTheme(light);

    setObjectName(QStringLiteral("miniBarWindow"));
    setAttribute(Qt::WA_StyledBackground, true);
    setAttribute(Qt::WA_DeleteOnClose, false);
    setAttribute(Qt::WA_QuitOnClose, false);
    setAttribute(Qt::WA_MouseTracking, true);
    // The collapsed bar appears beside the program in use and leaves it the keyboard.
    setAttribute(Qt::WA_ShowWithoutActivating, true);
    setFocusPolicy(Qt::StrongFocus);
    setWindowFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);

    setStyleSheet(miniBarStyleSheet(light));
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(outerMargin, outerMargin, outerMargin, outerMargin);
    outer->setSpacing(0);
    m_stack = new QStackedLayout;
    outer->addLayout(m_stack);
    m_pages = std::make_unique<BarPages>(m_stack, this);
    m_popups = std::make_unique<BarPopups>(this, BarPopups::Buttons{m_pages->sweepButton, m_pages->modButton},
                                           m_status, m_numericEdit,
                                           [this] { return QRect(m_reportedPosition, size()); });
    connectButtons();
    // All have their names now, by which the style sheet selects them.
    const QList<QWidget*> descendants = findChildren<QWidget*>();
    repolish(this);
    for (QWidget* descendant : descendants)
        repolish(descendant);
    ensurePolished();
    // The style sheet has a say in the buttons' sizes, so the pages are measured once it is in force.
    m_collapsedSize = withMargins(m_pages->collapsedPage);
    m_expandedSize = withMargins(m_pages->expandedPage);

    for (QWidget* descendant : descendants)
        descendant->installEventFilter(this);
    qApp->installEventFilter(this);
    watchScreens();
}

RemoteMiniBarWindow::~RemoteMiniBarWindow() = default;

// Construction

void RemoteMiniBarWindow::connectButtons()
{
    for (LabelButton* button : qAsConst(m_pages->rfButtons))
        connect(button, &LabelButton::clicked, this, &RemoteMiniBarWindow::toggleRf);
    for (LabelButton* button : qAsConst(m_pages->frequencyButtons)) {
        connect(button, &LabelButton::clicked, this,
                [this, button] { editQuickly(QuickEditField::Frequency, button); });
    }
    for (LabelButton* button : qAsConst(m_pages->levelButtons)) {
        connect(button, &LabelButton::clicked, this,
                [this, button] { editQuickly(QuickEditField::Level, button); });
    }
    connect(m_pages->sweepButton, &LabelButton::clicked, this, &RemoteMiniBarWindow::toggleSweep);
    connect(m_pages->modButton, &LabelButton::clicked, this, &RemoteMiniBarWindow::toggleModMenu);
    connect(m_popups.get(), &BarPopups::sweepChangeRequested, this,
            &RemoteMiniBarWindow::sweepChangeRequested);
    connect(m_popups.get(), &BarPopups::modChangeRequested, this, &RemoteMiniBarWindow::modChangeRequested);
    connect(m_pages->restoreButton, &QPushButton::clicked, this, &RemoteMiniBarWindow::restoreRequested);
    connect(m_pages->expandToggle, &QPushButton::clicked, this, [this] { setMode(MiniBarMode::Expanded); });
    connect(m_pages->collapseToggle, &QPushButton::clicked, this,
            [this] { setMode(MiniBarMode::Collapsed); });
}

void RemoteMiniBarWindow::watchScreens()
{
    const auto comeBackIntoView = [this] {
        takeOverMove();
        if (m_mode != MiniBarMode::Hidden)
            place();
    };
    const auto watch = [this, comeBackIntoView](QScreen* screen) {
        connect(screen, &QScreen::geometryChanged, this, comeBackIntoView);
        connect(screen, &QScreen::availableGeometryChanged, this, comeBackIntoView);
    };
    const QList<QScreen*> present = QGuiApplication::screens();
    for (QScreen* screen : present)
        watch(screen);
    connect(qApp, &QGuiApplication::screenAdded, this, watch);
    // Queued: when the signal arrives the window still belongs to the screen that goes.
    connect(qApp, &QGuiApplication::screenRemoved, this, comeBackIntoView, Qt::QueuedConnection);
}

// Showing, hiding, placing

void RemoteMiniBarWindow::setAnchorTopRight(QPoint topRight)
{
    if (topRight == Placement::unset || !m_collapsedSize.isValid() || m_collapsedSize.isEmpty())
        return;
    m_savedPosition = Placement::topLeftForAnchor(topRight, m_collapsedSize);
    if (m_mode != MiniBarMode::Hidden)
        place();
}

void RemoteMiniBarWindow::showMiniBar()
{
    // A bar that is already visible keeps its mode and is only placed again.
    const MiniBarMode mode = m_mode == MiniBarMode::Hidden ? m_lastVisibleMode : m_mode;
    setMode(mode == MiniBarMode::Expanded ? MiniBarMode::Expanded : MiniBarMode::Collapsed);
}

void RemoteMiniBarWindow::hideMiniBar()
{
    closeEverything();
    setMode(MiniBarMode::Hidden);
}

void RemoteMiniBarWindow::prepareForExit()
{
    m_closingAllowed = true;
    closeEverything();
}

void RemoteMiniBarWindow::closeEverything()
{
    m_popups->closeAll();
    m_numericEdit.cancel();
}

void RemoteMiniBarWindow::setMode(MiniBarMode target)
{
    if (target != MiniBarMode::Expanded)
        m_popups->closePopups();
    takeOverMove();
    if (target == m_mode) {
        if (target != MiniBarMode::Hidden && !m_drag.isDragging())
            place();
        return;
    }
    if (m_mode != MiniBarMode::Hidden && isVisible())
        m_lastVisibleMode = m_mode;
    m_awaitsActivation = m_mode == MiniBarMode::Hidden && target == MiniBarMode::Expanded;
    m_mode = target;
    if (target == MiniBarMode::Hidden) {
        m_presence.stop();
        hide();
        return;
    }
    const bool isExpanded = target == MiniBarMode::Expanded;
    m_stack->setCurrentWidget(isExpanded ? m_pages->expandedPage : m_pages->collapsedPage);
    place();
    setWindowOpacity(isExpanded ? fullOpacity : quietOpacity);
    appear();
    m_presence.begin();
}

void RemoteMiniBarWindow::appear()
{
    show();
    raise();
    if (m_mode == MiniBarMode::Expanded)
        activateWindow();
}

void RemoteMiniBarWindow::place()
{
    const Placement::Screens layout = currentScreens(this);
    if (m_savedPosition == Placement::unset) {
        m_savedPosition =
            Placement::defaultTopLeft(m_collapsedSize, Placement::screenRect(layout, QPoint(0, 0)));
    }
    m_savedPosition = clampedToScreen(m_savedPosition);

    QRect rect(m_savedPosition, m_collapsedSize);
    if (m_mode == MiniBarMode::Expanded) {
        rect.setSize(m_expandedSize);
        rect = Placement::fitted(rect, Placement::screenRect(layout, rect.topRight()));
    }
    setFixedSize(rect.size());
    putAt(rect.topLeft());
}

void RemoteMiniBarWindow::putAt(QPoint topLeft)
{
    m_placedPosition = topLeft;
    m_reportedPosition = topLeft;
    setGeometry(QRect(topLeft, size()));
}

QPoint RemoteMiniBarWindow::clampedToScreen(QPoint topLeft) const
{
    const auto frame = isVisible() ? std::make_optional(QRect(m_placedPosition, size())) : std::nullopt;
    return Placement::clamped(topLeft, m_collapsedSize,
                              Placement::screenRect(currentScreens(this), topLeft, frame));
}

void RemoteMiniBarWindow::takeOverMove()
{
    if (m_mode == MiniBarMode::Hidden || m_reportedPosition == m_placedPosition)
        return;
    m_placedPosition = m_reportedPosition;
    m_savedPosition = clampedToScreen(m_placedPosition);
}

// Status and quick edits

void RemoteMiniBarWindow::applySnapshot(const QJsonObject& snapshot)
{
    const QVector<ModBusinessEntry> before = m_status.businesses;
    if (!m_status.apply(snapshot))
        return;
    m_popups->showStatus(m_status.businesses != before);
    m_pages->setModEnabled(!m_status.businesses.isEmpty());
    refreshStatusLabels();
    setControlsEnabled(true);
}

void RemoteMiniBarWindow::refreshStatusLabels()
{
    m_pages->refresh(m_status);
}

void RemoteMiniBarWindow::setControlsEnabled(bool enabled)
{
    m_pages->setControlsEnabled(enabled, m_status);
    m_popups->setLocked(!enabled);
}

void RemoteMiniBarWindow::toggleRf()
{
    refreshStatusLabels(); // a button may have toggled itself
    emit rfChangeRequested(!m_status.rfOn);
}

void RemoteMiniBarWindow::toggleSweep()
{
    refreshStatusLabels();
    if (m_pages->sweepButton->isEnabled())
        m_popups->toggleSweep();
}

void RemoteMiniBarWindow::toggleModMenu()
{
    m_pages->refreshModButton(m_status);
    if (m_pages->modButton->isEnabled())
        m_popups->toggleModMenu();
}

void RemoteMiniBarWindow::editQuickly(QuickEditField field, QWidget* anchor)
{
    const bool frequency = field == QuickEditField::Frequency;
    const auto config = frequency ? frequencyKeyboardConfig(m_status) : levelKeyboardConfig(m_status);
    m_numericEdit.open(anchor, config, [this, frequency](double value) {
        if (frequency)
            emit centerChangeRequested(value);
        else
            emit levelChangeRequested(value);
    });
}
