#include "system/EditorRows.h"

namespace {

constexpr auto Type = EditorView::Type;
constexpr auto Choose = EditorView::Choose;
constexpr auto Switch = EditorView::Switch;
constexpr auto Click = EditorView::Click;

constexpr char field[] = "set-field";

EditorRow number(const char* editor, const char* control, const char* typed, const char* key,
                 const char* value, const char* before, const char* after, const char* confirmed = nullptr)
{
    return {editor, control, Type, typed, field, key, value, before, after, confirmed};
}

EditorRow choice(const char* editor, const char* control, const char* ordinal, const char* key,
                 const char* value, const char* before, const char* after)
{
    return {editor, control, Choose, ordinal, field, key, value, before, after};
}

// The modulation itself goes on.
EditorRow enable(const char* editor)
{
    return {editor, "Enabled", Switch, "On", "", "", "true", "off", "on", R"({"enabled":true})"};
}

} // namespace

// Fifteen digits where the bounds and the finest step of the field leave room for them; and, in two, what
// rounds to a whole number.
const QVector<EditorRow>& numericRows()
{
    // clang-format off
    static const QVector<EditorRow> rows = {
        number("digital", "Symbol Rate", "123.456789012345g", "SymbolRate", "123456789012.345", "1MHz", "123.456789012345GHz"),
        number("digital", "Filter Alpha", "0.12", "FilterAlpha", "0.12", "0.35", "0.12"),
        number("digital", "PN", "7.6", "PN", "8", "9", "8"),
        number("digital", "Filter Length (symbols)", "2147483647", "FilterLength", "2147483647", "32", "2147483647"),
        number("digital", "Sequence Seed", "123456789012345", "SequenceSeed", "123456789012345", "1", "123456789012345"),
        number("digital", "FSK Deviation", "250.123457k", "FSKDeviation", "250123.457", "250kHz", "250.123457kHz"),
        number("multitone", "Phase Random Seed", "987654321098765", "Seed", "987654321098765", "1", "987654321098765"),
        number("multitone", "Tone Count", "1001", "Count", "1001", "11", "1001"),
        number("multitone", "Freq Spacing", "987.654321098765g", "FreqSpacing", "987654321098.765", "1MHz", "987.654321098765GHz"),
        number("multitone", "Notch Width", "12345.679h", "NotchWidth", "12345.679", "5kHz", "12.345679kHz"),
        number("quick-waveform", "I/Q Scale(%)", "12.35", "iQScale", "12.35", "70 %", "12.35 %"),
        number("quick-waveform", "Sample Rate", "30.720000001M", "sampleRate", "30720000.001", "48kHz", "30.720000001MHz"),
        number("quick-waveform", "Period_Arb", "26214400", "period", "26214400", "48000", "26214400"),
        number("quick-waveform", "Samples To Use", "47990", "samplesToUse", "47990", "24000", "47990"),
        number("quick-waveform", "Sample Offset", "48000", "sampleOffset", "48000", "10", "48000"),
        number("am", "Rate", "1.234567890123g", "Rate", "1234567890.123", "2.5kHz", "1.234567890123GHz"),
        number("am", "Depth(%)", "12.35", "Depth", "12.35", "33.5", "12.35"),
        number("fm", "Rate", "12345.679h", "Rate", "12345.679", "1kHz", "12.345679kHz"),
        number("fm", "Deviation", "20.000001k", "Deviation", "20000.001", "123.456789kHz", "20.000001kHz"),
        number("pm", "Rate", "999.999h", "Rate", "999.999", "1MHz", "999.999Hz"),
        // Stored in radians.
        number("pm", "Phase Deviation(deg)", "359.99", "PhaseDeviation", "6.283010774254387", "90", "359.99"),
        number("pm", "Init Phase(deg)", "-123.46", "InitPhase", "-2.1547834945121993", "0", "-123.46"),
        number("pulse", "Width", "123.456789012345u", "Width", "0.000123456789012345", "250µs", "123.456789µs"),
        number("pulse", "Period", "1.23456789012345m", "Period", "0.00123456789012345", "1ms", "1.234568ms"),
        // Kept as a width.
        number("pulse", "Duty Cycle(%)", "33.33", "Width", "0.00033329999999999997", "25", "33.33"),
        number("digital-ramp", "Span", "20.000000012M", "Span", "20000000.012", "20MHz", "20.000000012MHz"),
        number("digital-ramp", "Sweep Time", "2.00000000000001s", "SweepTime", "2.00000000000001", "1.5ms", "2s"),
        number("digital-ramp", "Period", "123.456789012n", "Period", "1.23456789012e-07", "10ms", "123.456789ns"),
        number("awgn", "Bandwidth", "5123456.789h", "Bandwith", "5123456.789", "5MHz", "5.123456789MHz"),
        number("awgn", "Length", "1.00000000000001m", "Length", "0.00100000000000001", "1.234567ms", "1ms"),
        number("playback", "Sample Rate", "122.880000001m", "SampleRate", "122880000.001", "1MHz", "122.880000001MHz"),
        number("playback", "I/Q Scale(%)", "99.99", "IQScale", "99.99", "70", "99.99"),
        number("playback", "Sample Offset", "123456789012345", "SampleOffset", "123456789012345", "0", "123456789012345"),
        number("playback", "Samples To Use", "999999999999999", "SamplesToUse", "999999999999999", "1000", "999999999999999"),
        number("playback", "Period_Arb", "100000000000001", "Period", "100000000000001", "2000", "100000000000001"),
        number("streaming", "Sample Rate", "48000.001h", "SampleRate", "48000.001", "48kHz", "48.000001kHz"),
        number("streaming", "I/Q Scale(%)", "0.01", "IQScale", "0.01", "70", "0.01"),
        number("dsss", "Symbol Rate", "7.777777777M", "SymbolRate", "7777777.777", "1MHz", "7.777777777MHz"),
        number("dsss", "Filter Alpha", "0.99", "FilterAlpha", "0.99", "0.35", "0.99"),
        number("dsss", "Code", "7.5", "Code", "8", "31", "8"),
        number("dsss", "Filter Length (symbols)", "64", "FilterLength", "64", "8", "64"),
        number("dsss", "Sequence Seed", "4294967295", "SequenceSeed", "4294967295", "1", "4294967295"),
        number("ofdm", "Symbol Count", "100000000000000", "SymbolCount", "100000000000000", "14", "100000000000000"),
        number("ofdm", "Guard Band Carriers (Left)", "0", "GuardBandCarriersLeft", "0", "100", "0"),
        number("ofdm", "Guard Band Carriers (Right)", "511", "GuardBandCarriersRight", "511", "99", "511"),
        number("ofdm", "Guard Interval (%)", "12.346", "GuardInterval", "12.346", "25", "12.346"),
        number("ofdm", "Window Length (%)", "33.33", "WindowLength", "33.33", "50", "33.33"),
        number("ofdm", "Sample Rate", "30.720001234M", "SampleRate", "30720001.234", "30.72MHz", "30.720001234MHz"),
    };
    // clang-format on
    return rows;
}

const QVector<EditorRow>& controlRows()
{
    // clang-format off
    static const QVector<EditorRow> rows = {
        enable("digital"),
        choice("digital", "Filter Type", "2/3", "FilterType", R"("RootRaisedCosine")", "Raised Cosine", "Root Raised Cosine"),
        choice("digital", "Modulation Type", "2/4", "ModulationType", R"("PSK8")", "2FSK", "8PSK"),
        choice("digital", "Oversample", "4/4", "Oversample", "16", "4", "16"),
        {"digital", "Default Trim Download", Click, "", "set-default-trim", "value", "false", "on", "off",
         R"({"profile":{"defaultTrimDownload":false}})"},
        enable("multitone"),
        choice("multitone", "Tone Phase", "3/3", "PhaseMode", "2", "Fixed", "Parabolic"),
        {"multitone", "Discrete Tone Mode", Switch, "On", "set-discrete-mode", "value", "true", "off", "on",
         R"({"profile":{"discreteKeepToneMode":true}})"},
        enable("quick-waveform"),
        {"quick-waveform", "Auto Scale", Switch, "On", field, "autoScale", "true", "off", "on"},
        enable("am"),
        choice("am", "Shape", "2/4", "Shape", R"("Square")", "Triangle", "Square"),
        enable("fm"),
        choice("fm", "Shape", "4/4", "Shape", R"("Ramp")", "Sine", "Ramp"),
        enable("pm"),
        choice("pm", "Shape", "1/4", "Shape", R"("Sine")", "Ramp", "Sine"),
        enable("pulse"),
        enable("digital-ramp"),
        enable("awgn"),
        enable("playback"),
        {"playback", "Auto Scale", Switch, "On", field, "AutoScale", "true", "off", "on"},
        enable("streaming"),
        enable("dsss"),
        choice("dsss", "Filter Type", "5/5", "FilterType", R"("HalfSine")", "Root Raised Cosine", "Half-Sine"),
        choice("dsss", "Oversample", "14/15", "Oversample", "30", "8", "30"),
        enable("ofdm"),
        choice("ofdm", "Modulation Type", "4/7", "ModulationType", R"("PSK16")", "64QAM", "16PSK"),
        choice("ofdm", "FFT Size", "8/8", "FFTSize", "2048", "1024", "2048"),
        {"ofdm", "Null DC", Switch, "Off", field, "NullDC", "false", "on", "off"},
        {"ofdm", "Windowed", Switch, "On", field, "Windowed", "true", "off", "on"},
    };
    // clang-format on
    return rows;
}

const QVector<LockedRow>& lockedRows()
{
    // clang-format off
    static const QVector<LockedRow> rows = {
        {"digital", R"({"profile":{"filterAlphaEditable":false}})", {"Filter Alpha"}},
        {"digital", R"({"profile":{"fskDeviationEditable":false}})", {"FSK Deviation"}},
        {"quick-waveform", R"({"profile":{"loadedFilePath":""}})",
         {"I/Q Scale(%)", "Sample Rate", "Period_Arb", "Samples To Use", "Sample Offset", "Enabled"}},
        {"quick-waveform", R"({"editorState":{"autoScale":true}})", {"I/Q Scale(%)"}},
        {"quick-waveform", R"({"profile":{"iqsWavLoaded":true}})", {"I/Q Scale(%)"}},
        {"playback", R"({"editorState":{"FileName":""}})",
         {"Sample Rate", "I/Q Scale(%)", "Sample Offset", "Samples To Use", "Period_Arb", "Auto Scale"}},
        {"playback", R"({"profile":{"autoScaleLocked":true}})", {"I/Q Scale(%)", "Auto Scale"}},
        {"playback", R"({"profile":{"sampleOffsetEditable":false,"samplesToUseEditable":false,"periodEditable":false}})",
         {"Sample Offset", "Samples To Use", "Period_Arb"}},
        {"playback", "{}", {"File Name", "Samples In File", "Signal Length", "Period Length"}},
        {"quick-waveform", "{}", {"Period Length / Duration"}},
        {"streaming", "{}", {"Total Files", "Total Samples", "Total Duration", "Playback Pos"}},
        {"streaming", R"({"editorState":{"FileList":[]}})", {"Remove File", "Unload Files", "Enabled"}},
        {"dsss", R"({"editorState":{"FilterType":"Rectangular"}})", {"Filter Alpha", "Modulation Type"}},
        {"ofdm", "{}", {"Guard Interval Length", "Window Length", "Carrier Spacing"}},
    };
    // clang-format on
    return rows;
}
