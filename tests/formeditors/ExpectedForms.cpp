#include "formeditors/ExpectedForms.h"

#include <QtGlobal>
#include <algorithm>

namespace {

constexpr char value[] = "LabelButton";
constexpr char choice[] = "EnumTextButton";
constexpr char onOff[] = "SwitchButton";
constexpr char command[] = "InfoButton";

constexpr char frequency[] = "FrequencyUnitAdapter";
constexpr char time[] = "TimeUnitAdapter";

constexpr ExpectedButton enabled = {"enabled", onOff, "Enabled"};
constexpr ExpectedButton record = {"btnRecord", command, "Save IQ Data", true};
constexpr double degrees = 57.29577951308232;
constexpr auto none = std::nullopt;

QStringList words(const char* list)
{
    return QString::fromLatin1(list).split(QLatin1Char('|'));
}

ExpectedChoice shape()
{
    return {"btnShape", "Shape", R"(["Sine","Square","Triangle","Ramp"])", words("Sine|Square|Triangle|Ramp"),
            0};
}

// clang-format off
QVector<ExpectedForm> analogForms()
{
    return {
        {"am", "AMPanel", "RemoteAmPanel",
         {enabled, {"btnRate", value, "Rate"}, {"btnDepth", value, "Depth(%)"}, {"btnShape", choice, "Shape"},
          {"btnSave", command, "Save IQ Data", true}},
         {{"btnRate", "Rate", "Rate", frequency, "125", 1, 3, false, 1, none},
          {"btnDepth", "Depth", "Depth(%)", "", "", 10, 2, false, 0.01, 100}},
         {shape()}, {}, {}},
        {"fm", "FMPanel", "RemoteFmPanel",
         {enabled, {"btnRate", value, "Rate"}, {"btnDeviation", value, "Deviation"}, {"btnShape", choice, "Shape"}, record},
         {{"btnRate", "Rate", "Rate", frequency, "125", 1, 3, false, 1, none},
          {"btnDeviation", "Deviation", "Deviation", frequency, "125", 1, 3, false, 1, none}},
         {shape()}, {}, {}},
        {"pm", "PMPanel", "RemotePmPanel",
         {enabled, {"btnRate", value, "Rate"}, {"btnPhaseDeviation", value, "Phase Deviation(deg)"},
          {"btnInitPhase", value, "Init Phase(deg)"}, {"btnShape", choice, "Shape"}, record},
         {{"btnRate", "Rate", "Rate", frequency, "125", 1, 3, false, 1, none},
          {"btnPhaseDeviation", "PhaseDeviation", "Phase Deviation(deg)", "", "", 1, 2, false, 0, 360, degrees},
          {"btnInitPhase", "InitPhase", "Init Phase(deg)", "", "", 1, 2, false, -180, 180, degrees}},
         {shape()}, {}, {}},
        {"pulse", "PulsePanel", "RemotePulsePanel",
         {enabled, {"btnWidth", value, "Width"}, {"btnPeriod", value, "Period"}, {"btnDutyCycle", value, "Duty Cycle(%)"},
          record},
         {{"btnWidth", "Width", "Width", time, "", 0.000001, 6, false, 1e-12, none},
          {"btnPeriod", "Period", "Period", time, "", 0.000001, 6, false, 1e-12, none}},
         {}, {}, {QStringLiteral("Duty Cycle(%)")}},
        {"digital-ramp", "RampPanel", "RemoteRampPanel",
         {enabled, {"btnSpan", value, "Span"}, {"btnSweepTime", value, "Sweep Time"}, {"btnPeriod", value, "Period"},
          record, {"btnShowWaveForm", command, "showWaveForm", true}},
         {{"btnSpan", "Span", "Span", frequency, "125", 1000000, 3, false, 1, none},
          {"btnSweepTime", "SweepTime", "Sweep Time", time, "", 0.000001, 6, false, 1e-12, none},
          {"btnPeriod", "Period", "Period", time, "", 0.000001, 6, false, 1e-12, none}},
         {}, {}, {}},
    };
}

QVector<ExpectedForm> digitalForms()
{
    return {
        {"awgn", "AwgnPanel", "RemoteAwgnPanel",
         {enabled, {"btnBandwidth", value, "Bandwidth"}, {"btnLength", value, "Length"},
          {"btnSeed", value, "Seed", true}, record},
         {{"btnBandwidth", "Bandwith", "Bandwidth", frequency, "125", 1000000, 3, false, 1, none},
          {"btnLength", "Length", "Length", time, "", 0.001, 6, false, 1e-12, none}},
         {}, {}, {}},
        {"dsss", "DssPanel", "RemoteDsssPanel",
         {enabled, {"btnSymbolRate", value, "Symbol Rate"}, {"btnFilterAlpha", value, "Filter Alpha"},
          {"btnCode", value, "Code"}, {"btnFilterLength", value, "Filter Length (symbols)"},
          {"btnSequenceSeed", value, "Sequence Seed"}, {"btnFilterType", choice, "Filter Type"},
          {"btnModulationType", choice, "Modulation Type"}, {"btnOversample", choice, "Oversample"}, record},
         {{"btnSymbolRate", "SymbolRate", "Symbol Rate", frequency, "125", 1000000, 3, false, 1, none},
          {"btnFilterAlpha", "FilterAlpha", "Filter Alpha", "", "", 0.1, 2, false, 0, 1},
          {"btnCode", "Code", "Code", "", "", 1, 0, true, 1, none},
          {"btnFilterLength", "FilterLength", "Filter Length (symbols)", "", "", 1, 0, true, 1, none},
          {"btnSequenceSeed", "SequenceSeed", "Sequence Seed", "", "", 1, 0, true, 0, none}},
         {{"btnFilterType", "FilterType", R"(["Rectangular","RaisedCosine","RootRaisedCosine","Gaussian","HalfSine"])",
           words("Rectangular|Raised Cosine|Root Raised Cosine|Gaussian|Half-Sine"), 0},
          {"btnModulationType", "ModulationType", R"(["BPSK","QPSK"])", words("BPSK|QPSK"), 0},
          {"btnOversample", "Oversample", "[4,6,8,10,12,14,16,18,20,22,24,26,28,30,32]",
           words("4|6|8|10|12|14|16|18|20|22|24|26|28|30|32"), 1, false}},
         {}, {}},
        {"ofdm", "OfdmPanel", "RemoteOfdmPanel",
         {enabled, {"btnModulationType", choice, "Modulation Type"}, {"btnFFTSize", choice, "FFT Size"},
          {"btnSymbolCount", value, "Symbol Count"}, {"btnGuardBandCarriers_Left", value, "Guard Band Carriers (Left)"},
          {"btnGuardBandCarriers_Right", value, "Guard Band Carriers (Right)"},
          {"btnGuardInterval", value, "Guard Interval (%)"}, {"btnGuardIntervalLength", value, "Guard Interval Length"},
          {"btnWindowLengthPer", value, "Window Length (%)"}, {"btnWindowLength", value, "Window Length"},
          {"btnSampleRate", value, "Sample Rate"}, {"btnCarrierSpacing", value, "Carrier Spacing"},
          {"btnNullDC", onOff, "Null DC"}, {"btnWindowed", onOff, "Windowed"}, record},
         {{"btnSymbolCount", "SymbolCount", "Symbol Count", "", "", 1, 0, true, 0, none},
          {"btnGuardBandCarriers_Left", "GuardBandCarriersLeft", "Guard Band Carriers (Left)", "", "", 1, 0, true, 0, none},
          {"btnGuardBandCarriers_Right", "GuardBandCarriersRight", "Guard Band Carriers (Right)", "", "", 1, 0, true, 0, none},
          {"btnGuardInterval", "GuardInterval", "Guard Interval (%)", "", "", 0.01, 3, false, 0, none},
          {"btnWindowLengthPer", "WindowLength", "Window Length (%)", "", "", 1, 2, false, 0, 100},
          {"btnSampleRate", "SampleRate", "Sample Rate", frequency, "125", 1000000, 3, false, 1, none}},
         {{"btnModulationType", "ModulationType", R"(["BPSK","QPSK","PSK8","PSK16","QAM16","QAM64","QAM256"])",
           words("BPSK|QPSK|8PSK|16PSK|16QAM|64QAM|256QAM"), 1},
          {"btnFFTSize", "FFTSize", "[16,32,64,128,256,512,1024,2048]", words("16|32|64|128|256|512|1024|2048"), 1, false}},
         {{"btnNullDC", "NullDC"}, {"btnWindowed", "Windowed"}}, {QStringLiteral("%1 samples")}},
    };
}

QVector<ExpectedForm> fileForms()
{
    return {
        {"playback", "ArbPanel", "RemoteArbPanel",
         {enabled, {"btnFileName", value, "File Name"}, {"btnLoad", command, "Load"},
          {"btnSampleRate", value, "Sample Rate"}, {"btnIQScale", value, "I/Q Scale(%)"},
          {"btnAutoScale", onOff, "Auto Scale"}, {"btnSampleOffset", value, "Sample Offset"},
          {"btnSamplesToUse", value, "Samples To Use"}, {"btnPeriod", value, "Period_Arb"},
          {"btnSignalLen", value, "Signal Length"}, {"btnSamplesInFile", value, "Samples In File"},
          {"btnPeriodLen", value, "Period Length"}},
         {{"btnSampleRate", "SampleRate", "Sample Rate", frequency, "", 1000000, 3, false, 1, none},
          {"btnIQScale", "IQScale", "I/Q Scale(%)", "", "", 1, 2, false, 0.01, 100},
          {"btnSampleOffset", "SampleOffset", "Sample Offset", "", "125", 1, 0, true, 0, none},
          {"btnSamplesToUse", "SamplesToUse", "Samples To Use", "", "125", 1, 0, true, 0, none},
          {"btnPeriod", "Period", "Period_Arb", "", "125", 1, 0, true, 1, none}},
         {}, {{"btnAutoScale", "AutoScale"}}, {QStringLiteral("N/A")}, R"({"FileName":"/data/a.wav"})"},
        {"streaming", "StreamingPanel", "RemoteStreamingPanel",
         {{"Remove", "CommandButton", "Remove File"}, {"Load", "CommandButton", "Load Files"},
          {"Unload", "CommandButton", "Unload Files"}, enabled, {"btnSampleRate", value, "Sample Rate"},
          {"FileList", "PathList", ""}, {"btnIQScale", value, "I/Q Scale(%)"}, {"listTitle", "QLabel", "File List"},
          {"btnTotalFiles", value, "Total Files"}, {"btnTotalSamples", value, "Total Samples"},
          {"btnTotalDuration", value, "Total Duration"}, {"btnPlaybackPos", value, "Playback Pos"}},
         {{"btnSampleRate", "SampleRate", "Sample Rate", frequency, "", 1000000, 3, false, 1, none},
          {"btnIQScale", "IQScale", "I/Q Scale(%)", "", "", 1, 2, false, 0.01, 100}},
         {}, {}, {}, R"({"FileList":["/nowhere/a.wav","/nowhere/b.wav"]})", words("FileList|listTitle")},
    };
}
// clang-format on

} // namespace

const QVector<ExpectedForm>& expectedForms()
{
    static const QVector<ExpectedForm> forms = analogForms() + digitalForms() + fileForms();
    return forms;
}

const ExpectedForm& expectedForm(const QString& kind)
{
    const QVector<ExpectedForm>& forms = expectedForms();
    const auto form = std::find_if(forms.cbegin(), forms.cend(), [&kind](const ExpectedForm& candidate) {
        return kind == QLatin1String(candidate.kind);
    });
    if (form == forms.cend())
        qFatal("no such form is expected");
    return *form;
}
