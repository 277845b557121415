#include "modeditors/RemoteMultitonePanel.h"

#include "controls/ThemeManager.h"
#include "link/Keys.h"
#include "modeditors/PickerItems.h"
#include "ui_RemoteMultitonePanel.h"

#include <QJsonArray>

using Controls::ThemeManager;
namespace Actions = MinibarHelperProtocol::Actions;
namespace Keys = MinibarHelperProtocol::Keys;
using Kind = NumericField::Kind;

namespace {

constexpr QLatin1String discreteModeKey("discreteKeepToneMode");
constexpr QLatin1String randomModeKey("randomMode");
constexpr QLatin1String phaseModeKey("PhaseMode");

// clang-format off
constexpr NumericField fields[] = {
    {QLatin1String("Seed"), QLatin1String("btnSeed"),
     QT_TRANSLATE_NOOP("RemoteMultitonePanel", "Phase Random Seed"), Kind::NearestInteger, 1, 0, 0, std::nullopt,
     {}, randomModeKey},
    {QLatin1String("Count"), QLatin1String("btnCount"),
     QT_TRANSLATE_NOOP("RemoteMultitonePanel", "Tone Count"), Kind::Integer, 1, 0, 1, std::nullopt,
     QLatin1String("countMaximum")},
    {QLatin1String("FreqSpacing"), QLatin1String("btnFreqSpacing"),
     QT_TRANSLATE_NOOP("RemoteMultitonePanel", "Freq Spacing"), Kind::Frequency, 1e6, 3, 1, std::nullopt,
     QLatin1String("freqSpacingMaximum")},
    {QLatin1String("NotchWidth"), QLatin1String("btnNotchWidth"),
     QT_TRANSLATE_NOOP("RemoteMultitonePanel", "Notch Width"), Kind::Frequency, 1e3, 3, 0, std::nullopt,
     {}, discreteModeKey, false},
};

constexpr QLatin1String tableStyle(
    "QTableWidget{background:%1;color:%2;border:none;gridline-color:transparent;outline:none;}"
    "QTableWidget::item{padding:12px 20px;border:none;border-bottom:1px solid %3;background:%1;color:%2;}"
    "QTableWidget::item:selected{background:%4;color:%2;}"
    "QHeaderView::section{background:%5;color:%2;padding:12px 20px;border:none;border-bottom:1px solid %3;"
    "font-size:18px;}"
    "QTableWidget::indicator{width:18px;height:18px;}");
// clang-format on

// Where the seed's button stands or would stand; what is below it stands one row higher without it.
constexpr int seedRow = 1;
constexpr int columns = 2;

QVector<Tone> tonesOf(const QJsonArray& candidates)
{
    QVector<Tone> tones;
    tones.reserve(candidates.size());
    for (const QJsonValue& candidate : candidates) {
        if (!candidate.isObject()) {
            continue;
        }
        const QJsonObject tone = candidate.toObject();
        tones.append({tone.value(QLatin1String("requestedFrequency")).toDouble(),
                      tone.value(QLatin1String("enabled")).toBool(),
                      tone.value(QLatin1String("latticeIndex")).toInt()});
    }
    return tones;
}

QJsonArray jsonOf(const QVector<int>& numbers)
{
    QJsonArray array;
    for (const int number : numbers) {
        array.append(number);
    }
    return array;
}

void place(QGridLayout* grid, QWidget* widget, int row, int columnSpan = 1)
{
    grid->removeWidget(widget);
    grid->addWidget(widget, row, 0, 1, columnSpan);
}

} // namespace

RemoteMultitonePanel::RemoteMultitonePanel(QWidget* parent)
    : ConfirmingModEditor(parent)
    , m_form(std::make_unique<Ui::MultitonePanel>())
{
    m_form->setupUi(this);
    m_form->btnRecord->hide();
    m_form->btnShowWaveForm->hide();
    m_form->btnTonePhase->setEnums({tr("Fixed"), tr("Random"), tr("Parabolic")});
    m_form->btnTonePhase->setTitleText(m_form->btnTonePhase->text());
    m_form->btnTonePhase->setTextAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    m_form->btnTonePhase->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_form->toneTable->setHorizontalHeaderLabels({tr("Tone Num"), tr("FrequencyOffset"), tr("Enabled")});
    bind(m_form->enabled, fields);
    connectWidgets();
    showTheme();
}

RemoteMultitonePanel::~RemoteMultitonePanel() = default;

void RemoteMultitonePanel::connectWidgets()
{
    connect(m_form->btnTonePhase, &EnumTextButton::currentItemEdited, this, [this](int index) {
        edit([this, index] {
            if (index >= 0 && index < m_form->btnTonePhase->enums().size()) {
                editField(phaseModeKey, index);
            }
        });
    });
    connect(m_form->btnDiscreteKeepToneMode, &SwitchButton::statusChanged, this, [this](bool on) {
        edit([this, on] { emit actionEdited(Actions::set_discrete_mode, {{Keys::value, on}}); });
    });
    connect(m_form->toneTable, &ToneTable::enabledTonesEdited, this,
            [this](const QVector<int>& latticeIndices) {
                emit actionEdited(Actions::set_enabled_tones, {{Keys::value, jsonOf(latticeIndices)}});
            });
    connect(&ThemeManager::instance(), &ThemeManager::themeChanged, this, &RemoteMultitonePanel::showTheme);
}

void RemoteMultitonePanel::showState()
{
    EnumTextButton* const phase = m_form->btnTonePhase;
    showPickerItems(phase, phase->enums(), state().value(phaseModeKey).toInt());
    showSeed(profile().value(randomModeKey).toBool());
    const bool discrete = profile().value(discreteModeKey).toBool();
    m_form->btnDiscreteKeepToneMode->setStatus(discrete);
    m_form->btnNotchWidth->setVisible(!discrete);
    m_form->btnNotchWidth->setEnabled(!discrete);
    m_form->toneTable->setEnabled(discrete);
    m_form->toneTable->showTones(tonesOf(profile().value(QLatin1String("candidateTones")).toArray()));
}

// The table takes the spare height in whatever row it stands.
void RemoteMultitonePanel::showSeed(bool shown)
{
    if (shown == m_seedShown) {
        return;
    }
    m_seedShown = shown;
    QGridLayout* const grid = m_form->gridLayout;
    const int countRow = seedRow + int(shown);
    const int modeRow = countRow + 1;
    const int tableRow = countRow + 2;
    m_form->btnSeed->setVisible(shown);
    place(grid, m_form->btnCount, countRow);
    place(grid, m_form->btnDiscreteKeepToneMode, modeRow);
    place(grid, m_form->toneTable, tableRow, columns);
    constexpr int tableRowWithoutSeed = seedRow + 2;
    grid->setRowStretch(tableRowWithoutSeed, shown ? 0 : 1);
    grid->setRowStretch(tableRowWithoutSeed + 1, shown ? 1 : 0);
}

void RemoteMultitonePanel::showTheme()
{
    const ThemeManager& theme = ThemeManager::instance();
    m_form->toneTable->ensurePolished(); // or its header keeps what it has taken from another sheet
    m_form->toneTable->setStyleSheet(
        QString(tableStyle)
            .arg(theme.listItemDefaultColor().name(), theme.textColor().name(), theme.borderColor().name(),
                 theme.listItemSelectedColor().name(), theme.listItemDisabledColor().name()));
}
