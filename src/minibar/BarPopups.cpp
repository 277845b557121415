#include "minibar/BarPopups.h"

#include "controls/PopupWidget.h"
#include "minibar/BarStatus.h"
#include "minibar/KeyboardConfig.h"
#include "minibar/NumericEdit.h"
#include "minibar/StyleSheets.h"
#include "minibar/Theme.h"
#include "modeditors/RemoteModEditorHost.h"
#include "modeditors/contract/NumericFieldSpec.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <algorithm>

namespace {

const ModBusinessEntry* findBusiness(const BarStatus& status, const QString& id)
{
    const auto it = std::find_if(status.businesses.cbegin(), status.businesses.cend(),
                                 [&id](const ModBusinessEntry& business) { return business.id == id; });
    return it == status.businesses.cend() ? nullptr : &*it;
}

} // namespace

BarPopups::BarPopups(QWidget* bar, Buttons buttons, const BarStatus& status, NumericEdit& edit,
                     std::function<QRect()> barFrame)
    : m_buttons(buttons)
    , m_status(status)
    , m_edit(edit)
    , m_barFrame(std::move(barFrame))
    , m_sweep({QStringLiteral("miniBarHelperSweepOverlayHost"), QStringLiteral("miniBarHelperSweepPopup")},
              bar)
    , m_mod({QStringLiteral("miniBarHelperModOverlayHost"), QStringLiteral("miniBarHelperModPopup")}, bar)
    , m_menu(bar)
{
    for (EditorPopup* popup : {&m_sweep, &m_mod})
        connect(popup, &EditorPopup::closing, this, [this] {
            m_openingClick.hasClosed();
            m_edit.cancel();
        });
    connect(&m_menu, &ModMenu::businessChosen, this, &BarPopups::openMod);
}

BarPopups::~BarPopups() = default;

// Opening and closing

void BarPopups::toggleSweep()
{
    if (m_sweep.isOpen()) {
        m_sweep.close();
        return;
    }
    m_mod.close();
    if (!m_sweep.isBuilt())
        buildSweep();
    m_sweep.setStyleSheet(sweepPopupStyleSheet(readThemeSetting()));
    m_sweep.open(m_buttons.sweep, m_barFrame(), false);
    m_openingClick.hasOpened();
}

void BarPopups::toggleModMenu()
{
    if (m_menu.isEmpty())
        return;
    closePopups();
    if (m_menu.isVisible())
        m_menu.hide();
    else if (!m_menu.hasJustHidden())
        m_menu.open(m_buttons.mod, m_barFrame());
}

void BarPopups::closeAll()
{
    m_menu.hide();
    closePopups();
}

void BarPopups::closePopups()
{
    m_sweep.close();
    m_mod.close();
}

void BarPopups::buildSweep()
{
    m_sweep.build(BarStatus::tr("Sweep"), [this](QDialog* dialog) {
        m_sweepEditor = new RemoteSweepPanel(readThemeSetting(), dialog);
        return m_sweepEditor;
    });
    connect(m_sweepEditor, &RemoteSweepPanel::changeRequested, this, &BarPopups::sweepChangeRequested);
    connect(m_sweepEditor, &RemoteSweepPanel::numericEditRequested, this, &BarPopups::editSweepField);
    if (m_status.sweepPresent)
        m_sweepEditor->applySweep(m_status.sweep);
    m_sweepEditor->setBusy(m_locked);
}

void BarPopups::buildMod()
{
    m_mod.build(BarStatus::tr("MOD"), [this](QDialog* dialog) {
        m_modEditor = new RemoteModEditorHost(dialog);
        return m_modEditor;
    });
    // Before there is an editor, which would be styled without it and then again.
    m_mod.setStyleSheet(modPopupStyleSheet(readThemeSetting()));
    connect(m_modEditor, &RemoteModEditorHost::changeRequested, this, &BarPopups::modChangeRequested);
    connect(m_modEditor, &RemoteModEditorHost::numericEditRequested, this, &BarPopups::editModField);
}

void BarPopups::openMod(const QString& businessId)
{
    if (businessId.isEmpty() || !findBusiness(m_status, businessId))
        return;
    m_menu.check(m_status.enabledBusinessId);
    m_menu.hide();
    closePopups();
    if (!m_mod.isBuilt())
        buildMod();
    m_shownBusinessId = businessId;
    (void)loadBusiness();
    m_mod.setStyleSheet(modPopupStyleSheet(readThemeSetting()));
    m_mod.open(m_buttons.mod, m_barFrame(), true);
    m_openingClick.hasOpened();
}

bool BarPopups::loadBusiness()
{
    const ModBusinessEntry* business = findBusiness(m_status, m_shownBusinessId);
    if (!business)
        return false;
    m_mod.setTitle(business->text);
    m_modEditor->setModulationItem(business->id, business->name, business->text, business->editorState,
                                   business->editorKind, business->profile, business->revision,
                                   business->id == m_status.enabledBusinessId);
    return true;
}

// Confirmed state

void BarPopups::showStatus(bool businessesChanged)
{
    if (m_sweepEditor) {
        if (m_status.sweepPresent)
            m_sweepEditor->applySweep(m_status.sweep);
        else
            m_sweepEditor->clearSweep();
    }
    // A value that nobody would take is not asked for any longer.
    if (m_sweep.isOpen() && !(m_status.sweepPresent && m_status.sweep.available))
        m_edit.cancel();
    if (businessesChanged)
        m_menu.rebuild(m_status.businesses);
    m_menu.check(m_status.enabledBusinessId);
    // Also with an equal list: the item's switch and an edit that was refused need it.
    if (m_mod.isOpen() && !loadBusiness())
        m_mod.close();
}

void BarPopups::setLocked(bool locked)
{
    m_locked = locked;
    if (m_sweepEditor)
        m_sweepEditor->setBusy(locked);
}

// Numeric fields

void BarPopups::editSweepField(RemoteSweepPanel::NumericField field, QWidget* anchor)
{
    if (field == RemoteSweepPanel::NumericField::Invalid)
        return;
    m_edit.open(
        anchor, sweepKeyboardConfig(*m_sweepEditor, field),
        [this, field](double value) { m_sweepEditor->applyNumericValue(field, value); },
        [this, field] { m_sweepEditor->setNumericFieldActive(field, false); });
    if (m_edit.isOpen())
        m_sweepEditor->setNumericFieldActive(field, true);
}

void BarPopups::editModField(const QString& key, QAbstractButton* anchor)
{
    NumericFieldSpec spec;
    if (!m_modEditor->describeNumericField(key, spec))
        return;
    m_edit.open(
        anchor, modKeyboardConfig(spec),
        [this, key](double value) { m_modEditor->applyNumericValue(key, value); },
        [this, key] { m_modEditor->setNumericFieldActive(key, false); });
    if (m_edit.isOpen())
        m_modEditor->setNumericFieldActive(key, true);
}

// What the user does elsewhere

EditorPopup* BarPopups::openPopup()
{
    return m_sweep.isOpen() ? &m_sweep : m_mod.isOpen() ? &m_mod : nullptr;
}

bool BarPopups::isDialogOpen() const
{
    return owns(QApplication::activeModalWidget()) && !m_edit.isOpen();
}

bool BarPopups::handleDeactivation()
{
    EditorPopup* const popup = openPopup();
    if (!popup)
        return false;
    if (!popup->closeDropDown() && !popup->hasDropDownJustClosed() && !m_edit.isOpen() &&
        !m_edit.hasJustClosed())
        popup->close();
    return true;
}

bool BarPopups::handlePress(const QObject* target)
{
    EditorPopup* const popup = openPopup();
    if (!popup || popup->owns(target) || m_edit.owns(target) || m_edit.hasJustClosed())
        return false;
    popup->pressedOutside();
    return true;
}

void BarPopups::watchVisibility(QObject* object, bool visible)
{
    auto* const dropDown = qobject_cast<PopupWidget*>(object);
    if (!dropDown)
        return;
    for (EditorPopup* popup : {&m_sweep, &m_mod}) {
        if (popup->owns(dropDown))
            popup->dropDownChanged(dropDown, visible);
    }
}
