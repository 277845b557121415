#pragma once

#include "link/ChangeRequests.h"
#include "minibar/BarDrag.h"
#include "minibar/BarStatus.h"
#include "minibar/NumericEdit.h"
#include "minibar/Placement.h"
#include "minibar/PresenceCheck.h"

#include <QJsonObject>
#include <QWidget>
#include <memory>

class BarPages;
class BarPopups;
class QMouseEvent;
class QStackedLayout;

// The mini bar: one small always-on-top window that mirrors the instrument and offers quick edits. It shows
// what the last snapshot said; every edit leaves as a signal and shows only when a snapshot confirms it.
class RemoteMiniBarWindow final : public QWidget
{
    Q_OBJECT

public:
    enum class MiniBarMode { Hidden = 0, Collapsed = 1, Expanded = 2 };
    enum class QuickEditField { None = 0, Frequency = 1, Level = 2 };

    explicit RemoteMiniBarWindow(QWidget* parent = nullptr);
    ~RemoteMiniBarWindow() override;

    // Puts the collapsed bar's right edge at topRight.x and its top at topRight.y, in desktop coordinates;
    // (-1, -1) leaves it where it is.
    void setAnchorTopRight(QPoint topRight);
    // Shows the bar in the mode that it had when it was last visible.
    void showMiniBar();
    void hideMiniBar();
    void applySnapshot(const QJsonObject& snapshot);
    // From here on a close is accepted; everything that is open closes.
    void prepareForExit();

    void refreshStatusLabels();
    void setControlsEnabled(bool enabled);

    [[nodiscard]] MiniBarMode mode() const { return m_mode; }

    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    void restoreRequested();
    void rfChangeRequested(bool enabled);
    void centerChangeRequested(double hz);
    void levelChangeRequested(double dbm);
    void sweepChangeRequested(MinibarHelperProtocol::SweepChangeRequest request);
    void modChangeRequested(MinibarHelperProtocol::ModChangeRequest request);

protected:
    void closeEvent(QCloseEvent* event) override;
    void enterEvent(QEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void connectButtons();
    void watchScreens();

    void setMode(MiniBarMode target);
    // Puts the window where it belongs in the current mode.
    void place();
    void appear();
    void putAt(QPoint topLeft);
    // Follows a move that was not ours (the window manager's): the bar stays where it was taken.
    void takeOverMove();
    [[nodiscard]] QPoint clampedToScreen(QPoint topLeft) const;

    // True if the event is consumed.
    bool handlePointer(QWidget* target, const QMouseEvent* event);
    bool handlePress(const QWidget* target, const QMouseEvent* event);
    bool continueDrag(QWidget* target, const QMouseEvent* event);
    bool endDrag();
    void collapseOnDeactivation();

    void closeEverything();
    void toggleRf();
    void toggleSweep();
    void toggleModMenu();
    void editQuickly(QuickEditField field, QWidget* anchor);

    static constexpr double quietOpacity = 0.65; // of the collapsed bar
    static constexpr double fullOpacity = 1.0;

    MiniBarMode m_mode = MiniBarMode::Hidden;
    MiniBarMode m_lastVisibleMode = MiniBarMode::Collapsed;
    bool m_closingAllowed = false;
    BarDrag m_drag;
    QPoint m_savedPosition = Placement::unset; // the collapsed bar's top-left
    // pos() is not to be trusted at all times, so the window keeps its own record.
    QPoint m_placedPosition;         // where it was last put
    QPoint m_reportedPosition;       // where it was last seen
    bool m_paintedSinceShow = false; // reports count from then on
    bool m_awaitsActivation = false; // shown expanded again, and not yet in use
    PresenceCheck m_presence;
    QSize m_collapsedSize;
    QSize m_expandedSize;
    QStackedLayout* m_stack = nullptr;
    std::unique_ptr<BarPages> m_pages;
    BarStatus m_status;
    NumericEdit m_numericEdit;
    std::unique_ptr<BarPopups> m_popups;
};
