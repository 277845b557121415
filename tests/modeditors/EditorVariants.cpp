#include "modeditors/EditorVariants.h"

#include "modeditors/EditorView.h"
#include "modeditors/RemoteModEditorHost.h"
#include "modeditors/contract/RemoteModEditor.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QVector>
#include <iterator>

namespace {

// An editor that takes part: its kind, and a state and a profile with every key that it reads.
struct WalkedEditor
{
    const char* kind;
    const char* state;
    const char* profile;
};

// clang-format off
constexpr WalkedEditor walkedEditors[] = {
    {"digital",
     R"({"SymbolRate":1e6, "FilterAlpha":0.3, "PN":9, "FilterLength":32, "SequenceSeed":5, "FSKDeviation":1000,
         "ModulationType":"QAM64", "FilterType":"HalfSine", "Oversample":4})",
     R"({"defaultTrimDownload":true, "trimmedDownloadRequired":true, "fullWaveformEstimatedBytes":5e9,
         "filterAlphaEditable":true, "fskDeviationEditable":true, "modulationTypeOptions":["QAM16","QAM64","QPSK"],
         "filterTypeOptions":["None","HalfSine"], "oversampleOptions":[2,4,4,8]})"},
    {"multitone",
     R"({"PhaseMode":1, "Seed":12345, "Count":4, "FreqSpacing":1e6, "NotchWidth":2500})",
     R"({"randomMode":true, "discreteKeepToneMode":true, "countMaximum":100, "freqSpacingMaximum":1e7,
         "candidateTones":[{"requestedFrequency":3e6, "latticeIndex":7, "enabled":true},
             {"requestedFrequency":1e6, "latticeIndex":2}, {"requestedFrequency":-2e6, "latticeIndex":-4}]})"},
    {"quick-waveform",
     R"({"currentPath":"/none", "autoScale":false, "iQScale":62.5, "sampleRate":1e6, "period":5000, "samplesToUse":4000,
         "sampleOffset":10, "periodLength":0.005, "signalLength":0.004})",
     R"({"loadedFilePath":"/none/a.wav", "rootPath":"/none", "loadInProgress":true, "iqsWavLoaded":false,
         "loadError":"no file", "samplesInFile":9000})"},
    {"am", R"({"Rate":2500, "Depth":33.5, "Shape":"Triangle"})", "{}"},
    {"fm", R"({"Rate":1000, "Deviation":123456.789, "Shape":"Sine"})", "{}"},
    {"pm", R"({"Rate":1e6, "PhaseDeviation":1.5707963267948966, "InitPhase":-3.14159, "Shape":"Ramp"})", "{}"},
    {"pulse", R"({"Width":0.00025, "Period":0.001})", "{}"},
    {"digital-ramp", R"({"Span":20e6, "SweepTime":1.25e-6, "Period":0.01})", "{}"},
    {"awgn", R"({"Bandwith":5e6, "Length":0.00125})", "{}"},
    {"dsss",
     R"({"SymbolRate":1234567.891, "FilterAlpha":0.35, "Code":12345678, "FilterLength":64, "SequenceSeed":1,
         "FilterType":"RootRaisedCosine", "ModulationType":"QPSK", "Oversample":8})",
     R"({"oversampleOptions":[4,8,16], "filterAlphaEditable":true})"},
    {"ofdm",
     R"({"ModulationType":"QAM64", "FFTSize":1024, "SymbolCount":14, "GuardBandCarriersLeft":100,
         "GuardBandCarriersRight":99, "GuardInterval":25, "WindowLength":50, "SampleRate":30.72e6,
         "NullDC":true, "Windowed":false})", "{}"},
    {"no-such-kind", "{}", "{}"},
};
// clang-format on

// The value, something near to it, or something else altogether.
QJsonValue varied(const QJsonValue& value, Random& random)
{
    if (random.oneIn(12)) {
        const QVector<QJsonValue> others = {QJsonValue(), true, -1.5, QStringLiteral("other"), QJsonArray{1}};
        return others.at(random.below(others.size()));
    }
    if (value.isBool()) {
        return random.oneIn(2);
    }
    if (value.isDouble()) {
        return value.toDouble() * (1 + random.below(3)) / (1 + random.below(2));
    }
    if (value.isArray()) {
        QJsonArray array;
        const QJsonArray all = value.toArray();
        for (const QJsonValue element : all) {
            if (!random.oneIn(4)) {
                array.append(element.isObject() ? varied(element, random) : element);
            }
        }
        return array;
    }
    if (value.isObject()) {
        QJsonObject object = value.toObject();
        const QStringList keys = object.keys();
        for (const QString& key : keys) {
            if (random.oneIn(10)) {
                object.remove(key);
            } else if (random.oneIn(2)) {
                object.insert(key, varied(object.value(key), random));
            }
        }
        return object;
    }
    return value;
}

QJsonObject object(const char* json)
{
    return QJsonDocument::fromJson(json).object();
}

// Another object of the same keys.
QJsonObject variedObject(const QJsonObject& sample, Random& random)
{
    QJsonValue other;
    do {
        other = varied(sample, random);
    } while (!other.isObject());
    return other.toObject();
}

} // namespace

EditorVariants::EditorVariants(Random& random)
    : m_variants(std::size(walkedEditors))
{
    for (int kind = 0; kind < kinds(); ++kind) {
        const QJsonObject state = object(walkedEditors[kind].state);
        const QJsonObject profile = object(walkedEditors[kind].profile);
        auto& variants = m_variants[std::size_t(kind)];
        for (Variant& variant : variants) {
            variant = {variedObject(state, random), variedObject(profile, random)};
        }
        variants.front() = {state, profile};
    }
}

int EditorVariants::kinds()
{
    return int(std::size(walkedEditors));
}

QString EditorVariants::kind(int index)
{
    return QLatin1String(walkedEditors[index].kind);
}

const EditorVariants::Variant& EditorVariants::variant(int kind, int index) const
{
    return m_variants[std::size_t(kind)][std::size_t(index)];
}

const QStringList& EditorVariants::shown(int kindIndex, int index, bool enabled)
{
    const auto key = std::make_tuple(kindIndex, index, enabled);
    const auto known = m_shown.find(key);
    if (known != m_shown.end()) {
        return known->second;
    }
    RemoteModEditorHost host;
    const Variant& item = variant(kindIndex, index);
    host.setModulationItem(QStringLiteral("k"), QString(), QStringLiteral("t"), item.state, kind(kindIndex),
                           item.profile, 1, enabled);
    const auto* const editor = host.findChild<RemoteModEditor*>();
    return m_shown[key] = editor ? shownBy(*editor) : QStringList();
}
