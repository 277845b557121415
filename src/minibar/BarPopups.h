#pragma once

#include "link/ChangeRequests.h"
#include "minibar/EditorPopup.h"
#include "minibar/ModMenu.h"
#include "minibar/OpeningClick.h"
#include "sweep/RemoteSweepPanel.h"

#include <QObject>
#include <functional>

class NumericEdit;
class QAbstractButton;
class RemoteModEditorHost;
struct BarStatus;

// What opens from the expanded bar: the sweep popup, the modulation menu and the modulation popup, at most
// one of them at a time. It feeds their editors with the confirmed state and passes on what they ask for.
class BarPopups final : public QObject
{
    Q_OBJECT

public:
    // What a popup or the menu opens below.
    struct Buttons
    {
        QWidget* sweep;
        QWidget* mod;
    };

    // `status` and `edit` are the window's and outlive this object, as do the window `bar` and its buttons;
    // `barFrame` tells where the bar stands.
    BarPopups(QWidget* bar, Buttons buttons, const BarStatus& status, NumericEdit& edit,
              std::function<QRect()> barFrame);
    ~BarPopups() override;

    // A click on the sweep button: opens the popup or closes it.
    void toggleSweep();
    // A click on the MOD button: opens the menu or hides it.
    void toggleModMenu();
    // Menu and popups close.
    void closeAll();
    void closePopups();

    // The status holds a newly accepted snapshot; `businessesChanged`: its list of businesses differs from
    // the last.
    void showStatus(bool businessesChanged);
    // A locked sweep editor takes no edits.
    void setLocked(bool locked);

    [[nodiscard]] bool isAnyOpen() const { return m_sweep.isOpen() || m_mod.isOpen(); }
    // Part of a popup that stands in its overlay.
    [[nodiscard]] bool owns(const QObject* object) const
    {
        return m_sweep.owns(object) || m_mod.owns(object);
    }
    // An editor has a modal dialog open, other than the keyboard: until it closes, all that happens is its
    // affair.
    [[nodiscard]] bool isDialogOpen() const;
    [[nodiscard]] bool isMenuVisible() const { return m_menu.isVisible(); }
    [[nodiscard]] bool isMenu(const QObject* object) const { return m_menu.owns(object); }

    // The user has turned to something else. True if that has been dealt with: a popup was open.
    bool handleDeactivation();
    // Part of the double click that has opened a popup, and to go no further.
    [[nodiscard]] bool isOpeningClick(const QEvent& event) { return m_openingClick.takes(event); }
    // A press on `target`. True if it is consumed: it closed something.
    bool handlePress(const QObject* target);
    // Sees every show, hide and close of a widget of the program.
    void watchVisibility(QObject* object, bool visible);

signals:
    void sweepChangeRequested(MinibarHelperProtocol::SweepChangeRequest request);
    void modChangeRequested(MinibarHelperProtocol::ModChangeRequest request);

private:
    [[nodiscard]] EditorPopup* openPopup();
    void buildSweep();
    void buildMod();
    void openMod(const QString& businessId);
    [[nodiscard]] bool loadBusiness();
    void editSweepField(RemoteSweepPanel::NumericField field, QWidget* anchor);
    void editModField(const QString& key, QAbstractButton* anchor);

    Buttons m_buttons;
    const BarStatus& m_status;
    NumericEdit& m_edit;
    std::function<QRect()> m_barFrame;
    EditorPopup m_sweep;
    EditorPopup m_mod;
    ModMenu m_menu;
    RemoteSweepPanel* m_sweepEditor = nullptr;
    RemoteModEditorHost* m_modEditor = nullptr;
    QString m_shownBusinessId;
    OpeningClick m_openingClick;
    bool m_locked = false;
};
