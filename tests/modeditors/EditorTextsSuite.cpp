#include "controls/EnumTextButton.h"
#include "modeditors/EditorFixture.h"
#include "modeditors/EditorSuites.h"
#include "support/LanguageTable.h"
#include "support/Translators.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QSet>
#include <QTest>

namespace {

// A recording translator for as long as it lives.
class Recorder final
{
public:
    Recorder() { QCoreApplication::installTranslator(&m_translator); }
    ~Recorder() { QCoreApplication::removeTranslator(&m_translator); }
    Q_DISABLE_COPY(Recorder)

    [[nodiscard]] const QSet<QString>& asked() const { return m_translator.asked; }

private:
    TestSupport::RecordingTranslator m_translator;
};

QString line(const char* context, const char* text)
{
    return QLatin1String(context) + QLatin1Char('|') + QLatin1String(text);
}

struct ExpectedText
{
    const char* kind;
    const char* context;
    const char* text;
};

// clang-format off
constexpr ExpectedText expectedTexts[] = {
    {"digital", "DigitalPanel", "Form"}, {"digital", "DigitalPanel", "Enabled"},
    {"digital", "DigitalPanel", "Symbol Rate"}, {"digital", "DigitalPanel", "Filter Type"},
    {"digital", "DigitalPanel", "Modulation Type"}, {"digital", "DigitalPanel", "Filter Alpha"},
    {"digital", "DigitalPanel", "PN"}, {"digital", "DigitalPanel", "Filter Length (symbols)"},
    {"digital", "DigitalPanel", "Sequence Seed"}, {"digital", "DigitalPanel", "Oversample"},
    {"digital", "DigitalPanel", "FSK Deviation"}, {"digital", "DigitalPanel", "Default Trim Download"},
    {"digital", "DigitalPanel", "Save IQ Data"}, {"digital", "DigitalPanel", "showWaveForm"},
    {"digital", "RemoteDigitalPanel", "Symbol Rate"}, {"digital", "RemoteDigitalPanel", "Filter Alpha"},
    {"digital", "RemoteDigitalPanel", "PN"}, {"digital", "RemoteDigitalPanel", "Filter Length (symbols)"},
    {"digital", "RemoteDigitalPanel", "Sequence Seed"}, {"digital", "RemoteDigitalPanel", "FSK Deviation"},
    {"digital", "RemoteDigitalPanel", "The full waveform is approximately %1 and will be trimmed for download."},
    {"digital", "AnalogModulationPlugin", "64QAM"}, {"digital", "AnalogModulationPlugin", "QPSK"},
    {"digital", "AnalogModulationPlugin", "Half-Sine"},
    {"multitone", "MultitonePanel", "Form"}, {"multitone", "MultitonePanel", "Enabled"},
    {"multitone", "MultitonePanel", "Tone Phase"}, {"multitone", "MultitonePanel", "Phase Random Seed"},
    {"multitone", "MultitonePanel", "Freq Spacing"}, {"multitone", "MultitonePanel", "Tone Count"},
    {"multitone", "MultitonePanel", "Notch Width"}, {"multitone", "MultitonePanel", "Discrete Tone Mode"},
    {"multitone", "MultitonePanel", "Save IQ Data"}, {"multitone", "MultitonePanel", "Show Waveform"},
    {"multitone", "RemoteMultitonePanel", "Fixed"}, {"multitone", "RemoteMultitonePanel", "Random"},
    {"multitone", "RemoteMultitonePanel", "Parabolic"}, {"multitone", "RemoteMultitonePanel", "Tone Num"},
    {"multitone", "RemoteMultitonePanel", "FrequencyOffset"}, {"multitone", "RemoteMultitonePanel", "Enabled"},
    {"multitone", "RemoteMultitonePanel", "Phase Random Seed"}, {"multitone", "RemoteMultitonePanel", "Tone Count"},
    {"multitone", "RemoteMultitonePanel", "Freq Spacing"}, {"multitone", "RemoteMultitonePanel", "Notch Width"}, {"multitone", "ToneTable", "No tones"},
    {"quick-waveform", "QuickWaveformPanel", "Quick Waveform"},
    {"quick-waveform", "QuickWaveformPanel", "Enabled"},
    {"quick-waveform", "QuickWaveformPanel", "Load"},
    {"quick-waveform", "QuickWaveformPanel", "Auto Scale"},
    {"quick-waveform", "QuickWaveformPanel", "I/Q Scale(%)"},
    {"quick-waveform", "QuickWaveformPanel", "Sample Rate"},
    {"quick-waveform", "QuickWaveformPanel", "Period Length / Duration"},
    {"quick-waveform", "QuickWaveformPanel", "Period_Arb"},
    {"quick-waveform", "QuickWaveformPanel", "Samples To Use"},
    {"quick-waveform", "QuickWaveformPanel", "Sample Offset"},
    {"quick-waveform", "RemoteQuickWaveformPanel", "File Name"},
    {"quick-waveform", "RemoteQuickWaveformPanel", "Samples / Duration"},
    {"quick-waveform", "RemoteQuickWaveformPanel", "Double-click to locate the loaded waveform."},
    {"quick-waveform", "RemoteQuickWaveformPanel", "Load"},
    {"quick-waveform", "RemoteQuickWaveformPanel", "I/Q Scale(%)"},
    {"quick-waveform", "RemoteQuickWaveformPanel", "Sample Rate"},
    {"quick-waveform", "RemoteQuickWaveformPanel", "Period_Arb"},
    {"quick-waveform", "RemoteQuickWaveformPanel", "Samples To Use"},
    {"quick-waveform", "RemoteQuickWaveformPanel", "Sample Offset"},
    {"quick-waveform", "WaveformBrowser", "The folder of the waveforms is not available."},
};

struct ExpectedName
{
    const char* value;
    const char* shown;
};

constexpr ExpectedName expectedNames[] = {
    {"RaisedCosine", "Raised Cosine"}, {"RootRaisedCosine", "Root Raised Cosine"}, {"HalfSine", "Half-Sine"},
    {"PSK8", "8PSK"}, {"PSK16", "16PSK"}, {"QAM16", "16QAM"}, {"QAM64", "64QAM"}, {"QAM256", "256QAM"},
    {"QAM1024", "1024QAM"}, {"ASK2", "2ASK"}, {"ASK4", "4ASK"}, {"ASK8", "8ASK"}, {"FSK2", "2FSK"},
    {"FSK4", "4FSK"}, {"FSK8", "8FSK"}, {"FSK16", "16FSK"}, {"Pi4DQPSK", "Pi/4 DQPSK"}, {"APSK16", "16APSK"},
    // Without a name of their own.
    {"QPSK", "QPSK"}, {"qam64", "qam64"}, {"", ""},
};
// clang-format on

constexpr char fullState[] = R"({"PhaseMode":1, "autoScale":false})";
constexpr char fullProfile[] = R"({
    "filterAlphaEditable":true, "fskDeviationEditable":true, "randomMode":true, "trimmedDownloadRequired":true,
    "modulationTypeOptions":["QAM64","QPSK"], "filterTypeOptions":["HalfSine"], "oversampleOptions":[2],
    "loadedFilePath":"/none.wav"})";

} // namespace

// Each text is looked up in the context under which the translations have it.
class EditorTextsSuite final : public QObject
{
    Q_OBJECT

private slots:
    void contexts_data();
    void contexts();
    void displayName_data();
    void displayName();
};

void EditorTextsSuite::contexts_data()
{
    QTest::addColumn<QString>("kind");
    QTest::newRow("digital") << QStringLiteral("digital");
    QTest::newRow("multitone") << QStringLiteral("multitone");
    QTest::newRow("quick waveform") << QStringLiteral("quick-waveform");
}

void EditorTextsSuite::contexts()
{
    QFETCH(const QString, kind);
    QSet<QString> expected;
    for (const ExpectedText& text : expectedTexts) {
        if (kind == QLatin1String(text.kind)) {
            expected.insert(line(text.context, text.text));
        }
    }
    const Recorder recorder;
    EditorFixture fixture(kind);
    fixture.apply(parsed(fullState), parsed(fullProfile), true);
    for (const char* key :
         {"SymbolRate", "FilterAlpha", "PN", "FilterLength", "SequenceSeed", "FSKDeviation", "Seed", "Count",
          "FreqSpacing", "NotchWidth", "iQScale", "sampleRate", "period", "samplesToUse", "sampleOffset"}) {
        NumericFieldSpec spec;
        (void)fixture.editor().describeNumericField(QLatin1String(key), spec);
    }
    QSet<QString> asked;
    for (const QString& text : recorder.asked()) {
        // Not the words of the kit and of Qt.
        if (!text.startsWith(QLatin1String("SwitchButton|")) &&
            !text.startsWith(QLatin1String("QGuiApplication|"))) {
            asked.insert(text);
        }
    }
    const QStringList missing = (expected - asked).values();
    const QStringList unexpected = (asked - expected).values();
    QVERIFY2(missing.isEmpty(), qPrintable(missing.join(QLatin1Char('\n'))));
    QVERIFY2(unexpected.isEmpty(), qPrintable(unexpected.join(QLatin1Char('\n'))));
    QCOMPARE(asked - TestSupport::translatableTexts(QStringLiteral(CONFIGURATION_DIR)), QSet<QString>());
}

void EditorTextsSuite::displayName_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("shown");
    for (const ExpectedName& name : expectedNames) {
        QTest::addRow("'%s'", name.value)
            << QString::fromLatin1(name.value) << QString::fromLatin1(name.shown);
    }
}

void EditorTextsSuite::displayName()
{
    QFETCH(const QString, value);
    QFETCH(const QString, shown);
    const Recorder recorder;
    EditorFixture fixture(QStringLiteral("digital"));
    const QJsonArray options = {value};
    fixture.apply({}, {{QStringLiteral("modulationTypeOptions"), options}});
    fixture.apply({}, {{QStringLiteral("filterTypeOptions"), options}});
    QCOMPARE(fixture.find<EnumTextButton>(QStringLiteral("filterType"))->enums(), QStringList(shown));
    fixture.apply({}, {{QStringLiteral("modulationTypeOptions"), options}});
    QCOMPARE(fixture.find<EnumTextButton>(QStringLiteral("modulationType"))->enums(), QStringList(shown));
    QVERIFY(shown.isEmpty() || recorder.asked().contains(QLatin1String("AnalogModulationPlugin|") + shown));
}

std::unique_ptr<QObject> makeEditorTextsSuite()
{
    return std::make_unique<EditorTextsSuite>();
}

#include "EditorTextsSuite.moc"
