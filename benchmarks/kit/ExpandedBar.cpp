#include "kit/ExpandedBar.h"

#include "controls/LabelButton.h"
#include "kit/Rounds.h"

#include <QCoreApplication>
#include <QDialog>
#include <QMenu>
#include <QPushButton>
#include <algorithm>

ExpandedBar::ExpandedBar(const QJsonObject& snapshot)
{
    m_window.applySnapshot(snapshot);
    m_window.showMiniBar();
    expand();
    QCoreApplication::processEvents();
}

void ExpandedBar::expand()
{
    if (m_window.findChild<QWidget*>(QStringLiteral("miniBarExpandedPage"))->isVisible())
        return;
    const auto toggles = m_window.findChildren<QPushButton*>(QStringLiteral("miniBarToggleButton"));
    const auto shown = std::find_if(toggles.cbegin(), toggles.cend(),
                                    [](const QPushButton* toggle) { return toggle->isVisible(); });
    require(shown != toggles.cend(), "the bar cannot be expanded");
    (*shown)->click();
}

LabelButton* ExpandedBar::button(QLatin1String name) const
{
    const auto buttons = m_window.findChildren<LabelButton*>(QStringLiteral("miniBarInfoButton"));
    const auto found = std::find_if(buttons.cbegin(), buttons.cend(), [name](const LabelButton* candidate) {
        return candidate->isVisible() && (candidate->text() == name || candidate->labelText() == name);
    });
    require(found != buttons.cend(), name.data());
    return *found;
}

QMenu* ExpandedBar::menu() const
{
    return m_window.findChild<QMenu*>(QStringLiteral("miniBarModMenu"));
}

QDialog* ExpandedBar::sweepPopup() const
{
    return m_window.findChild<QDialog*>(QStringLiteral("miniBarHelperSweepPopup"));
}

QDialog* ExpandedBar::modPopup() const
{
    return m_window.findChild<QDialog*>(QStringLiteral("miniBarHelperModPopup"));
}
