#include "modeditors/RemoteQuickWaveformPanel.h"

#include "controls/ThemeManager.h"
#include "modeditors/WaveformBrowser.h"
#include "modeditors/contract/NumericFieldSpec.h"
#include "ui_RemoteQuickWaveformPanel.h"
#include "utils/NumberText.h"

#include <QHeaderView>
#include <algorithm>

using Controls::ThemeManager;
using Kind = NumericField::Kind;

// A library's resources are linked only where they are asked for; the macro works in no namespace.
static void provideIcons()
{
    Q_INIT_RESOURCE(quick_waveform);
}

namespace {

constexpr QLatin1String autoScaleKey("autoScale");
constexpr QLatin1String scaleKey("iQScale");
constexpr QLatin1String periodKey("period");
constexpr QLatin1String samplesToUseKey("samplesToUse");
constexpr QLatin1String sampleOffsetKey("sampleOffset");
constexpr QLatin1String loadedFileKey("loadedFilePath");
constexpr QLatin1String samplesInFileKey("samplesInFile");

// clang-format off
constexpr NumericField fields[] = {
    {scaleKey, QLatin1String("btnIQScale"),
     QT_TRANSLATE_NOOP("RemoteQuickWaveformPanel", "I/Q Scale(%)"), Kind::Number, 1, 2, 0.01, 100,
     {}, QLatin1String("iqsWavLoaded"), false, 100, QLatin1String(" %")},
    {QLatin1String("sampleRate"), QLatin1String("btnSampleRate"),
     QT_TRANSLATE_NOOP("RemoteQuickWaveformPanel", "Sample Rate"), Kind::Frequency, 1e6, 3, 1},
    {periodKey, QLatin1String("btnPeriod"),
     QT_TRANSLATE_NOOP("RemoteQuickWaveformPanel", "Period_Arb"), Kind::NearestInteger, 1, 0, 1, 26214400},
    {samplesToUseKey, QLatin1String("btnSamplesToUse"),
     QT_TRANSLATE_NOOP("RemoteQuickWaveformPanel", "Samples To Use"), Kind::NearestInteger, 1, 0, 0},
    {sampleOffsetKey, QLatin1String("btnSampleOffset"),
     QT_TRANSLATE_NOOP("RemoteQuickWaveformPanel", "Sample Offset"), Kind::NearestInteger, 1, 0, 0},
};

constexpr QLatin1String panelStyle(
    "QWidget#QuickWaveformPanel{background:%1;border:1px solid %2;border-radius:4px;}");
constexpr QLatin1String tableStyle(
    "QTableWidget{background:%1;color:%2;border:none;gridline-color:transparent;outline:none;}"
    "QTableWidget::item{padding:12px 20px;border:none;border-bottom:1px solid %3;background:%1;color:%2;"
    "font-size:13px;}"
    "QTableWidget::item:selected{background:%4;color:%2;}"
    "QTableWidget::item:pressed{background:%5;color:%2;}"
    "QHeaderView::section{background:%6;color:%2;padding:12px 20px;border:none;border-bottom:1px solid %3;"
    "font-size:18px;font-weight:500;}");
// clang-format on

constexpr int frameWidth = 1; // pixels, as the style sheet has it

QString timeSpan(const QJsonValue& seconds)
{
    constexpr int decimals = 3;
    return Utils::normalizeTimeSpan(seconds.toDouble(), decimals);
}

} // namespace

RemoteQuickWaveformPanel::RemoteQuickWaveformPanel(QWidget* parent)
    : ConfirmingModEditor(parent)
    , m_form(std::make_unique<Ui::QuickWaveformPanel>())
{
    provideIcons();
    m_form->setupUi(this);
    setAttribute(Qt::WA_StyledBackground);
    setContentsMargins(frameWidth, frameWidth, frameWidth, frameWidth); // nothing stands on the panel's frame
    m_form->btnPeriodLen->setTextAlignment(Qt::AlignLeft | Qt::AlignTop);
    m_form->btnPeriodLen->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_form->tableWidget->setHorizontalHeaderLabels({tr("File Name"), tr("Samples / Duration")});
    m_form->tableWidget->horizontalHeaderItem(WaveformTable::Name)
        ->setTextAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    m_form->tableWidget->horizontalHeaderItem(WaveformTable::Facts)
        ->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_form->tableWidget->horizontalHeader()->setToolTip(tr("Double-click to locate the loaded waveform."));
    m_browser = new WaveformBrowser(m_form->tableWidget, this);
    bind(m_form->enabled, fields);
    connectWidgets();
    showTheme();
}

RemoteQuickWaveformPanel::~RemoteQuickWaveformPanel() = default;

void RemoteQuickWaveformPanel::connectWidgets()
{
    const auto selectFile = [this](const QString& path) {
        edit([this, path] {
            emit actionEdited(QStringLiteral("select-file"), {{QStringLiteral("path"), path}});
        });
    };
    connect(m_form->btnLoad, &QPushButton::clicked, this, [this, selectFile] {
        const QString path = m_browser->selectedFile();
        if (!path.isEmpty()) {
            selectFile(path);
        }
    });
    connect(m_browser, &WaveformBrowser::fileChosen, this, selectFile);
    connect(m_browser, &WaveformBrowser::clicked, this, [this] { showConfirmed(); });
    connect(m_form->btnAutoScale, &SwitchButton::statusChanged, this,
            [this](bool on) { edit([this, on] { editField(autoScaleKey, on); }); });
    connect(&ThemeManager::instance(), &ThemeManager::themeChanged, this,
            &RemoteQuickWaveformPanel::showTheme);
}

void RemoteQuickWaveformPanel::showState()
{
    m_browser->show(profile().value(QLatin1String("rootPath")).toString(),
                    state().value(QLatin1String("currentPath")).toString(),
                    profile().value(loadedFileKey).toString());
    m_form->btnAutoScale->setStatus(state().value(autoScaleKey).toBool());
    m_form->btnPeriodLen->setLabelText(
        QStringLiteral("%1 / %2").arg(timeSpan(state().value(QLatin1String("periodLength"))),
                                      timeSpan(state().value(QLatin1String("signalLength")))));
    showLoadState();
}

void RemoteQuickWaveformPanel::showLoadState()
{
    const bool loading = profile().value(QLatin1String("loadInProgress")).toBool();
    const QString error = profile().value(QLatin1String("loadError")).toString();
    QPushButton* const load = m_form->btnLoad;
    const QString text = loading ? tr("Loading...") : error.isEmpty() ? tr("Load") : tr("Load Failed");
    load->setText(text);
    if (load->toolTip() != error) {
        load->setToolTip(error);
    }
    m_form->tableWidget->setNotice(loading ? QString() : error); // a finger cannot ask for the tool tip
    load->setEnabled(!loading);
    m_form->btnIQScale->setEnabled(canScale());
    for (QWidget* button :
         {m_form->btnSampleRate, m_form->btnPeriod, m_form->btnSamplesToUse, m_form->btnSampleOffset}) {
        button->setEnabled(canBeEnabled());
    }
}

bool RemoteQuickWaveformPanel::canBeEnabled() const
{
    return !profile().value(loadedFileKey).toString().isEmpty();
}

bool RemoteQuickWaveformPanel::canScale() const
{
    return canBeEnabled() && !state().value(autoScaleKey).toBool() && isEditable(scaleKey);
}

bool RemoteQuickWaveformPanel::completeSpec(NumericFieldSpec* spec) const
{
    const double samples = profile().value(samplesInFileKey).toDouble();
    if (spec->key == sampleOffsetKey) {
        spec->setMaximum(samples);
    } else if (spec->key == samplesToUseKey) {
        const double left = samples - state().value(sampleOffsetKey).toDouble();
        spec->setMaximum(std::max(0.0, std::min(state().value(periodKey).toDouble(), left)));
    }
    return spec->key == scaleKey ? canScale() : canBeEnabled();
}

void RemoteQuickWaveformPanel::showEvent(QShowEvent* event)
{
    ConfirmingModEditor::showEvent(event);
    m_browser->setPaused(false);
}

void RemoteQuickWaveformPanel::hideEvent(QHideEvent* event)
{
    ConfirmingModEditor::hideEvent(event);
    m_browser->setPaused(true);
}

// The buttons stand out from the panel, the table does as its header tells.
void RemoteQuickWaveformPanel::showTheme()
{
    const ThemeManager& theme = ThemeManager::instance();
    const QString surface = theme.listItemDisabledColor().name();
    const QString text = theme.textColor().name();
    const QString border = theme.borderColor().name();
    const QString selected = theme.listItemSelectedColor().name();
    setStyleSheet(QString(panelStyle).arg(surface, border));
    m_form->tableWidget->ensurePolished(); // or its header keeps what it has taken from another sheet
    m_form->tableWidget->setStyleSheet(
        QString(tableStyle)
            .arg(theme.listItemDefaultColor().name(), text, border, selected, selected, surface));
}
