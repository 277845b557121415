#include "system/EditorItems.h"

#include "support/FakeMain.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace {

constexpr char items[] = R"([
{"id":"digital", "editorState":{
    "SymbolRate":1e6,"FilterAlpha":0.35,"PN":9,"FilterLength":32,"SequenceSeed":1,"FSKDeviation":250e3,
    "ModulationType":"FSK2","FilterType":"RaisedCosine","Oversample":4}, "profile":{
    "defaultTrimDownload":true,"filterAlphaEditable":true,"fskDeviationEditable":true,
    "modulationTypeOptions":["BPSK","PSK8","QAM16","FSK2"],
    "filterTypeOptions":["RaisedCosine","RootRaisedCosine","HalfSine"],"oversampleOptions":[2,4,8,16]}},
{"id":"multitone", "editorState":{
    "PhaseMode":0,"Seed":1,"Count":11,"FreqSpacing":1e6,"NotchWidth":5e3}, "profile":{
    "randomMode":true,"discreteKeepToneMode":false,"candidateTones":[
        {"requestedFrequency":3e6,"latticeIndex":7},
        {"requestedFrequency":1e6,"latticeIndex":2,"enabled":true},
        {"requestedFrequency":2e6,"latticeIndex":4}]}},
{"id":"quick-waveform", "editorState":{
    "currentPath":"%1","autoScale":false,"iQScale":70,"sampleRate":48e3,"period":48000,"samplesToUse":24000,
    "sampleOffset":10,"periodLength":1,"signalLength":0.5}, "profile":{
    "rootPath":"%1","loadedFilePath":"%1/first.wav","samplesInFile":48000}},
{"id":"am", "editorState":{"Rate":2500,"Depth":33.5,"Shape":"Triangle"}},
{"id":"fm", "editorState":{"Rate":1000,"Deviation":123456.789,"Shape":"Sine"}},
{"id":"pm", "editorState":{"Rate":1e6,"PhaseDeviation":1.5707963267948966,"InitPhase":0,"Shape":"Ramp"}},
{"id":"pulse", "editorState":{"Width":0.00025,"Period":0.001}},
{"id":"digital-ramp", "editorState":{"Span":20e6,"SweepTime":0.0015,"Period":0.01}},
{"id":"awgn", "editorState":{"Bandwith":5e6,"Length":0.001234567}},
{"id":"playback", "editorState":{
    "FileName":"%1/first.wav","SampleRate":1e6,"IQScale":70,"SampleOffset":0,"SamplesToUse":1000,"Period":2000,
    "AutoScale":false}, "profile":{"samplesInFile":48000}},
{"id":"streaming", "editorState":{
    "FileList":["%1/first.wav","%1/second.wav","%1/third.wav"],"SampleRate":48000,"IQScale":70}},
{"id":"dsss", "editorState":{
    "SymbolRate":1e6,"FilterAlpha":0.35,"Code":31,"FilterLength":8,"SequenceSeed":1,
    "FilterType":"RootRaisedCosine","ModulationType":"QPSK","Oversample":8}},
{"id":"ofdm", "editorState":{
    "ModulationType":"QAM64","FFTSize":1024,"SymbolCount":14,"GuardBandCarriersLeft":100,
    "GuardBandCarriersRight":99,"GuardInterval":25,"WindowLength":50,"SampleRate":30.72e6,
    "NullDC":true,"Windowed":false}}])";

void merge(QJsonObject& object, const QJsonObject& difference)
{
    for (auto entry = difference.begin(); entry != difference.end(); ++entry) {
        if (entry->isObject()) {
            QJsonObject inner = object.value(entry.key()).toObject();
            merge(inner, entry->toObject());
            object.insert(entry.key(), inner);
        } else {
            object.insert(entry.key(), *entry);
        }
    }
}

QJsonObject numbered(QJsonObject snapshot, int sequence)
{
    QJsonObject mod = snapshot.value(QLatin1String("mod")).toObject();
    QJsonArray businesses = mod.value(QLatin1String("businesses")).toArray();
    for (int i = 0; i < businesses.size(); ++i) {
        QJsonObject item = businesses[i].toObject();
        item.insert(QStringLiteral("revision"), sequence);
        businesses[i] = item;
    }
    mod.insert(QStringLiteral("businesses"), businesses);
    snapshot.insert(QStringLiteral("mod"), mod);
    snapshot.insert(QStringLiteral("seq"), sequence);
    return snapshot;
}

} // namespace

EditorItems::EditorItems(const QString& folder)
    : m_snapshot(TestSupport::txSnapshot(0, false, 1e9, -20))
{
    QJsonParseError error;
    const QString text = QString::fromLatin1(items).replace(QLatin1String("%1"), folder);
    QJsonArray businesses = QJsonDocument::fromJson(text.toUtf8(), &error).array();
    if (error.error != QJsonParseError::NoError)
        qFatal("test data is no JSON: %s", qPrintable(error.errorString()));
    for (int i = 0; i < businesses.size(); ++i) {
        QJsonObject item = businesses[i].toObject();
        const QString id = item.value(QLatin1String("id")).toString();
        item.insert(QStringLiteral("name"), id);
        item.insert(QStringLiteral("text"), title(id));
        item.insert(QStringLiteral("editorKind"), id);
        businesses[i] = item;
    }
    m_snapshot.insert(QStringLiteral("mod"), QJsonObject{{QStringLiteral("enabled"), false},
                                                         {QStringLiteral("enabledBusinessId"), QString()},
                                                         {QStringLiteral("businesses"), businesses}});
}

QJsonObject EditorItems::firstState()
{
    return numbered(m_snapshot, ++m_sequence);
}

QJsonObject EditorItems::changed(const QString& id, const QJsonObject& difference)
{
    QJsonObject snapshot = firstState();
    QJsonObject mod = snapshot.value(QLatin1String("mod")).toObject();
    QJsonArray businesses = mod.value(QLatin1String("businesses")).toArray();
    for (int i = 0; i < businesses.size(); ++i) {
        QJsonObject item = businesses[i].toObject();
        if (item.value(QLatin1String("id")).toString() != id)
            continue;
        merge(item, difference);
        businesses[i] = item;
    }
    mod.insert(QStringLiteral("businesses"), businesses);
    if (difference.contains(QLatin1String("enabled")))
        mod.insert(QStringLiteral("enabledBusinessId"), id);
    snapshot.insert(QStringLiteral("mod"), mod);
    return snapshot;
}

QStringList EditorItems::ids() const
{
    QStringList ids;
    const QJsonArray businesses =
        m_snapshot.value(QLatin1String("mod")).toObject().value(QLatin1String("businesses")).toArray();
    for (const QJsonValue item : businesses)
        ids.append(item.toObject().value(QLatin1String("id")).toString());
    return ids;
}
