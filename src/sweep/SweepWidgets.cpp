#include "sweep/SweepWidgets.h"

#include "controls/EnumTextButton.h"
#include "controls/LabelButton.h"
#include "controls/SwitchButton.h"
#include "sweep/SweepFields.h"

#include <QGridLayout>
#include <QLabel>
#include <QStackedWidget>
#include <QVBoxLayout>

using Field = RemoteSweepPanel::NumericField;

namespace {

constexpr int buttonHeight = 60;
constexpr int spacing = 5;
constexpr int columns = 2;
constexpr int sentenceMargin = 8;

enum Page { FrequencyPage = 0, LevelPage = 1, UnsupportedPage = 2 };

struct ValueButtonName
{
    const char* objectName;
    Field field;
    Page page;
};

// In the order in which they stand on their page, row by row.
constexpr ValueButtonName valueButtons[] = {
    {"btnStartFreq", Field::FrequencyStart, FrequencyPage},
    {"btnStopFreq", Field::FrequencyStop, FrequencyPage},
    {"btnStepFreq", Field::FrequencyStep, FrequencyPage},
    {"btnDwellTime_Analog", Field::Dwell, FrequencyPage},
    {"btnStartLevel", Field::LevelStart, LevelPage},
    {"btnStopLevel", Field::LevelStop, LevelPage},
    {"btnStepLevel", Field::LevelStep, LevelPage},
    {"btnDwellTime_Analog_Level", Field::Dwell, LevelPage},
};

constexpr QLatin1String styleTemplate(
    "QWidget#remoteSweepPanel { background: transparent; }\n"
    "QWidget#remoteSweepPanel SwitchButton#enabled QPushButton#btnOn, "
    "QWidget#remoteSweepPanel SwitchButton#enabled QPushButton#btnOff { min-width: 72px; max-width: 72px; }\n"
    "QWidget#remoteSweepPanel QLabel#remoteSweepUnsupportedLabel "
    "{ color: %1; background: transparent; font-size: 13pt; }\n");

void setUp(LabelButton* button, const QString& objectName, const QString& text)
{
    button->setObjectName(objectName);
    button->setText(text);
    button->setLabelText(QStringLiteral("--"));
    button->setTextAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    button->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);
    button->setFocusPolicy(Qt::NoFocus);
    button->setFixedHeight(buttonHeight);
}

QGridLayout* addGrid(QWidget* widget)
{
    auto* const grid = new QGridLayout(widget);
    grid->setSpacing(spacing);
    for (int column = 0; column < columns; ++column) {
        grid->setColumnStretch(column, 1);
    }
    return grid;
}

} // namespace

int sweepPage(SweepPlanId plan)
{
    switch (plan) {
    case SweepPlanId::FrequencyScan:
        return FrequencyPage;
    case SweepPlanId::LevelScan:
        return LevelPage;
    case SweepPlanId::None:
    case SweepPlanId::Unsupported:
        break;
    }
    return UnsupportedPage;
}

SweepWidgets::SweepWidgets(RemoteSweepPanel* panel)
    : enabled(new SwitchButton(panel))
    , plan(new EnumTextButton(panel))
    , pages(new QStackedWidget(panel))
{
    enabled->setObjectName(QStringLiteral("enabled"));
    enabled->setText(RemoteSweepPanel::tr("Enabled"));
    enabled->setCompactMode(true);
    enabled->setFixedHeight(buttonHeight);

    setUp(plan, QStringLiteral("btnMode"), RemoteSweepPanel::tr("Sweep Type"));
    plan->setTitleText(plan->text());
    plan->setEnums({RemoteSweepPanel::tr("Freq"), RemoteSweepPanel::tr("Power")});

    addPlanPage(FrequencyPage);
    addPlanPage(LevelPage);
    addUnsupportedPage();

    QGridLayout* const grid = addGrid(panel);
    grid->setContentsMargins(10, 0, 6, 0);
    grid->addWidget(enabled, 0, 0);
    grid->addWidget(plan, 0, 1);
    grid->addWidget(pages, 1, 0, 1, columns);
}

void SweepWidgets::addPlanPage(int page)
{
    auto* const widget = new QWidget;
    QGridLayout* const grid = addGrid(widget);
    grid->setContentsMargins(0, 0, 0, 0);
    for (const ValueButtonName& entry : valueButtons) {
        if (entry.page != page) {
            continue;
        }
        const SweepField* const field = sweepField(entry.field);
        auto* const button = new LabelButton(widget);
        setUp(button, QLatin1String(entry.objectName), RemoteSweepPanel::tr(field->title));
        button->setCheckable(true);
        const int place = grid->count();
        grid->addWidget(button, place / columns, place % columns);
        values.append({field, page, button});
    }
    pages->addWidget(widget);
}

void SweepWidgets::addUnsupportedPage()
{
    auto* const widget = new QWidget;
    auto* const layout = new QVBoxLayout(widget);
    layout->setContentsMargins(sentenceMargin, sentenceMargin, sentenceMargin, sentenceMargin);
    auto* const label =
        new QLabel(RemoteSweepPanel::tr("The configured Sweep plan is not available in the helper."));
    label->setObjectName(QStringLiteral("remoteSweepUnsupportedLabel"));
    label->setAlignment(Qt::AlignCenter);
    label->setWordWrap(true);
    layout->addWidget(label);
    pages->addWidget(widget);
}

QString sweepStyleSheet(bool lightTheme)
{
    return QString(styleTemplate).arg(lightTheme ? QLatin1String("#938b84") : QLatin1String("#69727c"));
}
