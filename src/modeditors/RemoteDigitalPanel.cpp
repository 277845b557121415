#include "modeditors/RemoteDigitalPanel.h"

#include "controls/ThemeManager.h"
#include "link/Keys.h"
#include "modeditors/ModulationNames.h"
#include "modeditors/PickerItems.h"
#include "ui_RemoteDigitalPanel.h"
#include "utils/SizeText.h"

#include <QJsonArray>
#include <QSpacerItem>

using Controls::ThemeManager;
namespace Actions = MinibarHelperProtocol::Actions;
namespace Keys = MinibarHelperProtocol::Keys;
using Kind = NumericField::Kind;

namespace {

// clang-format off
constexpr NumericField fields[] = {
    {QLatin1String("SymbolRate"), QLatin1String("symbolRate"),
     QT_TRANSLATE_NOOP("RemoteDigitalPanel", "Symbol Rate"), Kind::Frequency, 1e6, 3, 1},
    {QLatin1String("FilterAlpha"), QLatin1String("filterAlpha"),
     QT_TRANSLATE_NOOP("RemoteDigitalPanel", "Filter Alpha"), Kind::Number, 0.1, 2, 0, 1,
     {}, QLatin1String("filterAlphaEditable")},
    {QLatin1String("PN"), QLatin1String("pn"),
     QT_TRANSLATE_NOOP("RemoteDigitalPanel", "PN"), Kind::Integer, 1, 0, 4, 24},
    {QLatin1String("FilterLength"), QLatin1String("filterLength"),
     QT_TRANSLATE_NOOP("RemoteDigitalPanel", "Filter Length (symbols)"), Kind::Integer, 2, 0, 1},
    {QLatin1String("SequenceSeed"), QLatin1String("sequenceSeed"),
     QT_TRANSLATE_NOOP("RemoteDigitalPanel", "Sequence Seed"), Kind::NearestInteger, 1, 0, 0},
    {QLatin1String("FSKDeviation"), QLatin1String("fskDeviation"),
     QT_TRANSLATE_NOOP("RemoteDigitalPanel", "FSK Deviation"), Kind::Frequency, 1e3, 3, 0, std::nullopt,
     {}, QLatin1String("fskDeviationEditable")},
};

constexpr QLatin1String checkBoxStyle(
    "QCheckBox{min-height:60px;max-height:60px;background:transparent;color:%1;spacing:12px;}"
    "QCheckBox::indicator{width:24px;height:24px;border:none;}"
    "QCheckBox::indicator:checked{border-image:url(%2);}"
    "QCheckBox::indicator:unchecked{border-image:url(%3);}");
// clang-format on

constexpr int spacerRow = 7;

// Names as they are shown, and the values that an edit sends, by index.
struct Options
{
    QStringList names;
    QJsonArray values;
    int current = -1;
};

// Only texts count; of several equal ones the first is current.
Options namedOptions(const QJsonArray& options, const QJsonValue& current)
{
    Options result;
    for (const QJsonValue& option : options) {
        if (!option.isString()) {
            continue;
        }
        if (result.current < 0 && option.toString() == current.toString()) {
            result.current = result.values.size();
        }
        result.names.append(modulationDisplayName(option.toString()));
        result.values.append(option);
    }
    return result;
}

// Of several equal ones the last is current.
Options integerOptions(const QJsonArray& options, const QJsonValue& current)
{
    Options result;
    for (const QJsonValue& option : options) {
        if (option.toInt() == current.toInt()) {
            result.current = result.values.size();
        }
        result.names.append(QString::number(option.toInt()));
        result.values.append(option);
    }
    return result;
}

// A count that no 64-bit integer holds becomes the nearest one that it does.
qint64 truncatedToInteger(double value)
{
    constexpr double limit = 9223372036854775808.0; // 2^63
    if (value >= limit) {
        return std::numeric_limits<qint64>::max();
    }
    return value < -limit ? std::numeric_limits<qint64>::min() : qint64(value);
}

} // namespace

struct RemoteDigitalPanel::Picker
{
    EnumTextButton* Ui::DigitalPanel::*button;
    QLatin1String key;        // in the editor state
    QLatin1String optionsKey; // in the profile
    Options (*read)(const QJsonArray& options, const QJsonValue& current);
    bool showsUnknown; // a current value that is no option is shown as it stands
    EnumTextButton::ViewMode viewMode;
    bool hasTitle; // the open list is titled with the caption

    [[nodiscard]] Options options(const QJsonObject& profile, const QJsonObject& state) const
    {
        return read(profile.value(optionsKey).toArray(), state.value(key));
    }
};

const RemoteDigitalPanel::Picker RemoteDigitalPanel::pickers[] = {
    {&Ui::DigitalPanel::filterType, QLatin1String("FilterType"), QLatin1String("filterTypeOptions"),
     namedOptions, true, EnumTextButton::List, false},
    {&Ui::DigitalPanel::modulationType, QLatin1String("ModulationType"),
     QLatin1String("modulationTypeOptions"), namedOptions, true, EnumTextButton::Grid, true},
    {&Ui::DigitalPanel::oversample, QLatin1String("Oversample"), QLatin1String("oversampleOptions"),
     integerOptions, false, EnumTextButton::Grid, true},
};

RemoteDigitalPanel::RemoteDigitalPanel(QWidget* parent)
    : ConfirmingModEditor(parent)
    , m_form(std::make_unique<Ui::DigitalPanel>())
{
    m_form->setupUi(this);
    m_form->btnSave->hide();
    m_form->btnShowWaveForm->hide();
    m_form->gridLayout->setRowStretch(spacerRow, 0);
    m_form->verticalSpacer->changeSize(0, 0, QSizePolicy::Minimum, QSizePolicy::Expanding);
    m_form->gridLayout->invalidate(); // it keeps what it knew of its items
    bind(m_form->enabled, fields);
    connectWidgets();
    showTheme();
}

RemoteDigitalPanel::~RemoteDigitalPanel() = default;

void RemoteDigitalPanel::connectWidgets()
{
    for (const Picker& picker : pickers) {
        EnumTextButton* const button = (*m_form).*picker.button;
        button->setTextAlignment(Qt::AlignLeft | Qt::AlignVCenter);
        button->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);
        button->setViewMode(picker.viewMode);
        if (picker.hasTitle) {
            button->setTitleText(button->text());
        }
        connect(button, &EnumTextButton::currentItemEdited, this,
                [this, entry = &picker](int index) { editPicker(*entry, index); });
    }
    connect(m_form->defaultTrimDownload, &QCheckBox::toggled, this, [this](bool checked) {
        edit([this, checked] { emit actionEdited(Actions::set_default_trim, {{Keys::value, checked}}); });
    });
    connect(&ThemeManager::instance(), &ThemeManager::themeChanged, this, &RemoteDigitalPanel::showTheme);
}

void RemoteDigitalPanel::editPicker(const Picker& picker, int index)
{
    edit([this, &picker, index] {
        const Options options = picker.options(profile(), state());
        if (index >= 0 && index < options.values.size()) {
            editField(picker.key, options.values.at(index));
        }
    });
}

void RemoteDigitalPanel::showState()
{
    showDefaultTrim();
    m_form->filterAlpha->setEnabled(isEditable(QLatin1String("FilterAlpha")));
    m_form->fskDeviation->setEnabled(isEditable(QLatin1String("FSKDeviation")));
    for (const Picker& picker : pickers) {
        const Options options = picker.options(profile(), state());
        showPickerItems((*m_form).*picker.button, options.names, options.current,
                        picker.showsUnknown ? state().value(picker.key).toString() : QString());
    }
}

void RemoteDigitalPanel::showDefaultTrim()
{
    m_form->defaultTrimDownload->setChecked(
        profile().value(QLatin1String("defaultTrimDownload")).toBool(true));
    QString warning;
    if (profile().value(QLatin1String("trimmedDownloadRequired")).toBool()) {
        const double bytes = profile().value(QLatin1String("fullWaveformEstimatedBytes")).toDouble();
        warning = tr("The full waveform is approximately %1 and will be trimmed for download.")
                      .arg(Utils::humanReadableSize(truncatedToInteger(bytes)));
    }
    if (m_form->defaultTrimDownload->toolTip() != warning) {
        m_form->defaultTrimDownload->setToolTip(warning);
    }
}

void RemoteDigitalPanel::showTheme()
{
    const ThemeManager& theme = ThemeManager::instance();
    const bool light = theme.theme() == ThemeManager::Light;
    const QLatin1String ending(light ? "_light" : "");
    m_form->defaultTrimDownload->setStyleSheet(
        QString(checkBoxStyle)
            .arg(theme.textColor().name(), QLatin1String(":/Controls/Image/checkbox_checked") + ending,
                 QLatin1String(":/Controls/Image/checkbox_unchecked") + ending));
}
