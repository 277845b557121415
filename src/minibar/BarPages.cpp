#include "minibar/BarPages.h"

#include "controls/LabelButton.h"
#include "controls/TellThenPaint.h"
#include "minibar/BarStatus.h"
#include "minibar/Repolish.h"

#include <QLabel>
#include <QPushButton>
#include <QStackedLayout>
#include <QVBoxLayout>

namespace {

constexpr int buttonWidth = 118;
constexpr int buttonHeight = 60;
constexpr int toggleHeight = 28;

const QLatin1String toggleName("miniBarToggleButton");
const QLatin1String commandName("miniBarCommandButton");

// A button that is checked when the instrument says so, and never by a click.
class ConfirmedButton final : public LabelButton
{
public:
    using LabelButton::LabelButton;

protected:
    void nextCheckState() override {}
};

// Style sheets reach a label by its own properties only, so the button's checked state is told to its labels.
void refreshParentChecked(LabelButton* button)
{
    const bool checked = button->isChecked();
    button->setProperty("parentChecked", checked);
    const QList<QLabel*> labels = button->findChildren<QLabel*>();
    for (QLabel* label : labels) {
        label->setProperty("parentChecked", checked);
        repolish(label);
    }
    repolish(button);
}

LabelButton* addInfoButton(QWidget* page, const QString& text, const QString& info, bool checkable)
{
    auto* button = new ConfirmedButton(page);
    button->setObjectName(QStringLiteral("miniBarInfoButton"));
    button->setFixedSize(buttonWidth, buttonHeight);
    button->setCursor(Qt::PointingHandCursor);
    button->setTextAlignment(Qt::AlignCenter);
    button->setLabelAlignment(Qt::AlignCenter);
    button->setCheckable(checkable);
    button->setText(text);
    button->setLabelText(info);
    refreshParentChecked(button);
    page->layout()->addWidget(button);
    return button;
}

QPushButton* addPushButton(QWidget* page, const QString& text, const QString& accessibleName,
                           QLatin1String objectName)
{
    auto* button = new Controls::TellThenPaint<QPushButton>(text, page);
    button->setObjectName(objectName);
    button->setAccessibleName(accessibleName);
    button->setFlat(true);
    button->setFocusPolicy(Qt::NoFocus);
    button->setCursor(Qt::PointingHandCursor);
    button->setFixedSize(buttonWidth, objectName == toggleName ? toggleHeight : buttonHeight);
    page->layout()->addWidget(button);
    return button;
}

void showTexts(LabelButton* button, const QString& text, const QString& info)
{
    if (button->text() != text)
        button->setText(text);
    if (button->labelText() != info)
        button->setLabelText(info);
}

void showChecked(LabelButton* button, bool checked)
{
    if (button->isChecked() == checked)
        return;
    button->setChecked(checked);
    refreshParentChecked(button);
}

void showEnabled(LabelButton* button, bool enabled)
{
    if (button->isEnabled() == enabled)
        return;
    button->setEnabled(enabled);
    refreshParentChecked(button);
}

} // namespace

BarPages::BarPages(QStackedLayout* stack, QWidget* parent)
{
    collapsedPage = buildPage(stack, parent, QStringLiteral("miniBarCollapsedPage"));
    addQuickControls(collapsedPage);
    expandToggle = addPushButton(collapsedPage, QStringLiteral("v"), tr("Expand"), toggleName);

    expandedPage = buildPage(stack, parent, QStringLiteral("miniBarExpandedPage"));
    addQuickControls(expandedPage);
    sweepButton = addInfoButton(expandedPage, tr("Fre/Pwr"), tr("Sweep"), true);
    modButton = addInfoButton(expandedPage, tr("MOD"), tr("OFF"), true);
    showEnabled(sweepButton, false);
    showEnabled(modButton, false);
    restoreButton = addPushButton(expandedPage, tr("Restore"), tr("Restore"), commandName);
    collapseToggle = addPushButton(expandedPage, QStringLiteral("^"), tr("Collapse"), toggleName);
}

QWidget* BarPages::buildPage(QStackedLayout* stack, QWidget* parent, const QString& objectName)
{
    auto* page = new QWidget(parent);
    page->setObjectName(objectName);
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    stack->addWidget(page);
    return page;
}

void BarPages::addQuickControls(QWidget* page)
{
    const QString nothing = QStringLiteral("--");
    rfButtons.append(addInfoButton(page, tr("RF"), tr("OFF"), true));
    frequencyButtons.append(addInfoButton(page, tr("Frequency"), nothing, false));
    levelButtons.append(addInfoButton(page, tr("Level"), nothing, false));
}

void BarPages::refresh(const BarStatus& status)
{
    const QString nothing = QStringLiteral("--");
    const QString rfText = !status.rfText.isEmpty() ? status.rfText : status.rfOn ? tr("ON") : tr("OFF");
    for (LabelButton* button : qAsConst(rfButtons)) {
        showTexts(button, tr("RF"), rfText);
        showChecked(button, status.rfOn);
    }
    for (LabelButton* button : qAsConst(frequencyButtons)) {
        showTexts(button, tr("Frequency"), status.frequencyText.isEmpty() ? nothing : status.frequencyText);
        showChecked(button, false);
    }
    for (LabelButton* button : qAsConst(levelButtons)) {
        showTexts(button, tr("Level"), status.levelText.isEmpty() ? nothing : status.levelText);
        showChecked(button, false);
    }
    showTexts(sweepButton, sweepButtonText(status), tr("Sweep"));
    showChecked(sweepButton, status.sweepActive());
    refreshModButton(status);
}

QString BarPages::sweepButtonText(const BarStatus& status)
{
    if (status.sweepActive()) {
        switch (status.sweep.settings.selectedPlanId) {
        case SweepPlanId::FrequencyScan:
            return tr("Freq");
        case SweepPlanId::LevelScan:
            return tr("Power");
        case SweepPlanId::None:
        case SweepPlanId::Unsupported:
            return tr("Unsupported");
        }
    }
    return tr("Fre/Pwr");
}

void BarPages::refreshModButton(const BarStatus& status)
{
    showTexts(modButton, tr("MOD"), status.modulationOn ? tr("ON") : tr("OFF"));
    showChecked(modButton, status.modulationOn);
}

void BarPages::setControlsEnabled(bool enabled, const BarStatus& status)
{
    for (const QVector<LabelButton*>& buttons : {rfButtons, frequencyButtons, levelButtons}) {
        for (LabelButton* button : buttons)
            showEnabled(button, enabled);
    }
    showEnabled(sweepButton, enabled && status.sweepPresent && status.sweep.available);
}

void BarPages::setModEnabled(bool enabled)
{
    showEnabled(modButton, enabled);
}
