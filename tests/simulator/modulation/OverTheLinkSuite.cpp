#include "simulator/Bench.h"
#include "simulator/modulation/ItemTalk.h"
#include "simulator/modulation/ModulationSuites.h"
#include "simulator/modulation/WaveformFiles.h"

using namespace Simulator;

namespace {

const char* const command = "SOUR:MOD:CONF";
const QString am = QStringLiteral("am");
const QString fm = QStringLiteral("fm");
const QString answerWord = QStringLiteral("RSP");
const QString eventWord = QStringLiteral("EVT");

} // namespace

// Modulation from one end of the link to the other.
class OverTheLinkSuite final : public QObject
{
    Q_OBJECT

private slots:
    void firstSnapshotHoldsAllItems();
    void changeIsAnsweredAndPushed();
    void refusalIsAnswered();
    void switchingOver();
    void loadingIsPushed();
};

void OverTheLinkSuite::firstSnapshotHoldsAllItems()
{
    const Bench bench;
    const QJsonObject mod = bench.first.value(QStringLiteral("mod")).toObject();
    QCOMPARE(MinibarHelperProtocol::parseModSnapshot(mod).businesses.size(), 13);
}

void OverTheLinkSuite::changeIsAnsweredAndPushed()
{
    Bench bench;
    bench.ask(3, command, forItem(am, R"("expectedRevision":1,)" + setField("Depth", "80")));
    const QJsonObject answered = bench.payload(answerWord);
    QCOMPARE(seq(answered), 2);
    QCOMPARE(itemIn(answered, am).revision, 2);
    QCOMPARE(itemIn(answered, am).editorState.value(QStringLiteral("Depth")), QJsonValue(80));
    const QJsonObject pushed = bench.payload(eventWord);
    QCOMPARE(seq(pushed), 3);
    QCOMPARE(pushed.value(QStringLiteral("mod")), answered.value(QStringLiteral("mod")));
}

void OverTheLinkSuite::refusalIsAnswered()
{
    Bench bench;
    bench.ask(1, command, forItem(am, R"("expectedRevision":9,)" + setField("Depth", "80")));
    QCOMPARE(bench.errorCode(), QStringLiteral("CONFLICT"));
    bench.ask(2, command, forItem(am, setField("Depth", "101")));
    const QJsonObject error = bench.error();
    QCOMPARE(error.value(QStringLiteral("code")), QJsonValue(QStringLiteral("INVALID_ARG")));
    QCOMPARE(error.value(QStringLiteral("message")),
             QJsonValue(QStringLiteral("The depth must lie between 0.01 % and 100 %.")));
    // Nothing was pushed: the next line answers the next request.
    bench.ask(3, "STAT:SNAP?", "{}");
    QCOMPARE(itemIn(bench.payload(answerWord), am), itemIn(bench.first, am));
}

void OverTheLinkSuite::switchingOver()
{
    Bench bench;
    bench.ask(1, command, forItem(am, R"("expectedRevision":1,"enabled":true)"));
    QCOMPARE(enabledIn(bench.payload(answerWord)), am);
    QCOMPARE(enabledIn(bench.payload(eventWord)), am);
    bench.ask(2, command, forItem(fm, R"("expectedRevision":1,"enabled":true)"));
    QCOMPARE(enabledIn(bench.payload(answerWord)), fm);
    QCOMPARE(enabledIn(bench.payload(eventWord)), fm);
    // Being switched off was a change of AM.
    bench.ask(3, command, forItem(am, R"("expectedRevision":2,"enabled":true)"));
    QCOMPARE(bench.errorCode(), QStringLiteral("CONFLICT"));
}

void OverTheLinkSuite::loadingIsPushed()
{
    const QString quick = QStringLiteral("quick-waveform");
    WaveformFolder folder;
    const QString path = folder.add(QStringLiteral("tone.wav"), wav(100, 1000));
    Bench bench("{}", folder.path());
    bench.ask(1, command,
              forItem(quick, R"("action":"select-file","args":{"path":")" + path.toUtf8() + "\"}"));
    const auto loading = [&](const QString& word) {
        return itemIn(bench.payload(word), quick).profile.value(QStringLiteral("loadInProgress"));
    };
    QCOMPARE(loading(answerWord), QJsonValue(true));
    QCOMPARE(loading(eventWord), QJsonValue(true));
    const ModBusinessEntry item = itemIn(bench.payload(eventWord), quick);
    QCOMPARE(item.profile.value(QStringLiteral("loadedFilePath")), QJsonValue(path));
    QCOMPARE(item.revision, 3);
}

std::unique_ptr<QObject> makeOverTheLinkSuite()
{
    return std::make_unique<OverTheLinkSuite>();
}

#include "OverTheLinkSuite.moc"
