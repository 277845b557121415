// The real helper against every behaviour of the hostile peer: what it must say, log and survive.

#include "support/ChildProcess.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>
#include <algorithm>

namespace {

constexpr int alive = -1; // instead of an exit code: the helper went on serving

// What a behaviour must come to.
struct Expectation
{
    const char* behaviour;
    int exitCode;             // of a helper that ends by itself, or alive
    int visible;              // VISIBLE lines
    int hidden;               // HIDDEN lines
    QVector<bool> requested;  // the RF states asked for, in order
    QVector<const char*> log; // sentences of the log, in order; each line of the log holds one of them
};

constexpr char oversized[] =
    "Minibar helper protocol error: Main process sent an oversized minibar protocol message.";
constexpr char badEvent[] = "Minibar helper protocol error: Malformed minibar event: ";
constexpr char eventNoObject[] = "Malformed minibar event: Expected a JSON object.";
constexpr char badResponse[] = "Minibar helper protocol error: Malformed minibar response: ";
constexpr char responseNoObject[] = "Malformed minibar response: Expected a JSON object.";

const QVector<Expectation>& expectations()
{
    static const QVector<Expectation> table = {
        {"split-bytes", alive, 1, 1, {}, {}},
        {"two-lines-at-once", alive, 1, 1, {}, {}},
        {"line-and-a-half", alive, 1, 1, {}, {}},
        {"carriage-returns", alive, 1, 1, {}, {}},
        {"blanks-around", alive, 0, 1, {}, {}},
        {"tab-as-separator", alive, 0, 0, {}, {}},
        {"lower-case", alive, 0, 0, {}, {}},
        {"unknown-words", alive, 0, 0, {}, {}},
        {"empty-lines", alive, 0, 0, {}, {}},
        {"own-words", alive, 0, 0, {}, {}},
        {"nul-bytes", alive, 0, 0, {}, {badEvent}},
        {"invalid-utf8", alive, 1, 0, {}, {}},
        {"longest-line", alive, 0, 0, {}, {}},
        {"longest-without-end", alive, 0, 0, {}, {}},
        {"oversized-without-end", 0, 0, 0, {}, {oversized}},
        {"oversized-line", 0, 0, 0, {}, {oversized}},
        {"flood-unknown", alive, 0, 0, {}, {}},
        {"flood-snapshots", alive, 0, 0, {}, {}},
        {"flood-switching", alive, 0, 0, {}, {}},
        {"flood-show", alive, 5000, 0, {}, {}},
        {"flood-show-hide", alive, 1000, 1000, {}, {}},
        {"never-reading", alive, 0, 100000, {}, {}},
        {"shutdown-twice", 0, 0, 0, {}, {}},
        {"shutdown-with-payload", 0, 0, 0, {}, {}},
        {"shutdown-then-show", 0, 1, 0, {}, {}},
        {"death-after-handshake", 0, 0, 0, {}, {}},
        {"death-in-mid-line", 0, 0, 0, {}, {}},
        {"death-in-flood", 0, 0, 0, {}, {"Failed to acknowledge minibar "}},
        {"half-closed", 0, 0, 0, {}, {}},
        {"bad-anchors", alive, 7, 0, {}, {}},
        {"far-anchors", alive, 5, 0, {}, {}},
        {"event-not-json", alive, 0, 0, {}, {badEvent, badEvent, badEvent, badEvent}},
        {"event-not-object", alive, 0, 0, {}, {eventNoObject}},
        {"response-not-json", alive, 0, 0, {}, {badResponse, badResponse, badResponse}},
        {"response-not-object", alive, 0, 0, {}, {responseNoObject}},
        {"not-a-number", alive, 0, 0, {}, {badEvent, badEvent, badEvent}},
        {"other-events", alive, 0, 0, {}, {}},
        {"wrong-types", alive, 0, 0, {}, {}},
        {"extreme-numbers", alive, 0, 0, {}, {}},
        {"deep-nesting", alive, 0, 0, {}, {badEvent, badResponse}},
        {"long-texts", alive, 0, 0, {}, {}},
        {"many-businesses", alive, 0, 0, {}, {}},
        {"bad-sweeps",
         alive,
         0,
         0,
         {},
         {"Ignoring malformed minibar Sweep snapshot: Expected boolean field 'available'.",
          "Ignoring malformed minibar Sweep snapshot: Field 'revision' must be a positive integer.",
          "Ignoring malformed minibar Sweep snapshot: Field 'revision' must be a positive integer.",
          "Ignoring malformed minibar Sweep snapshot: Expected boolean field 'enabled'.",
          "Ignoring malformed minibar Sweep snapshot: Unsupported Sweep plan id.",
          "Ignoring malformed minibar Sweep snapshot: Sweep snapshot does not support its selected plan.",
          "Ignoring malformed minibar Sweep snapshot: Sweep request requires frequencyPlan and levelPlan "
          "objects.",
          "Ignoring malformed minibar Sweep snapshot: Expected numeric field 'stopHz'.",
          "Ignoring malformed minibar Sweep snapshot: Sweep plan ids must be strings.",
          "Ignoring malformed minibar Sweep snapshot: Sweep snapshot does not support its selected plan."}},
        {"answered", alive, 1, 0, {true, false}, {}},
        {"answered-empty", alive, 1, 0, {true, true}, {}},
        {"answered-twice", alive, 1, 0, {true, false}, {}},
        {"older-answer-last", alive, 1, 0, {true, true, false}, {}},
        {"unknown-ids", alive, 1, 0, {true}, {R"(Minibar helper request failed 98 "NOT_OPEN" "no")"}},
        {"strange-ids", alive, 1, 0, {true, true}, {}},
        {"refused", alive, 1, 0, {true, true}, {R"(Minibar helper request failed 1 "CONFLICT" "no")"}},
        {"refused-with-state",
         alive,
         1,
         0,
         {true, false},
         {R"(Minibar helper request failed 1 "CONFLICT" "no")"}},
        {"shapeless-refusals",
         alive,
         1,
         0,
         {true, true},
         {"Minibar helper request failed 1 ", "Minibar helper request failed 1 ",
          "Minibar helper request failed 1 ", "Minibar helper request failed 1 "}},
        {"late-answer",
         alive,
         1,
         0,
         {true, true},
         {R"(Minibar helper request failed 1 "TIMEOUT" "Minibar request timed out.")",
          R"(Minibar helper request failed 1 "INTERNAL_ERROR" "no")"}},
        {"death-while-pending",
         0,
         1,
         0,
         {true},
         {R"(Minibar helper request failed 1 "TRANSPORT_ERROR" "Minibar IPC disconnected.")"}},
    };
    return table;
}

// Whether each expected sentence stands in its line and no line stands unexpected. The last sentence may
// repeat.
bool logMatches(const QJsonArray& log, const QVector<const char*>& expected)
{
    if (log.size() < expected.size() || (expected.isEmpty() && !log.isEmpty()))
        return false;
    for (int i = 0; i < log.size(); ++i)
        if (!log.at(i).toString().contains(QString::fromUtf8(expected.at(qMin(i, expected.size() - 1)))))
            return false;
    return true;
}

QByteArray runPeer(const QString& argument)
{
    constexpr int deadline = 90000; // ms; a flood takes a while under a sanitizer
    TestSupport::ChildProcess peer;
    peer.start(QStringLiteral(HOSTILE_PEER), {argument});
    return peer.waitForFinished(deadline) ? peer.readAllStandardOutput() : QByteArray();
}

} // namespace

class TestHostile final : public QObject
{
    Q_OBJECT

private slots:
    void everyBehaviourIsExpected();
    void behaviour_data();
    void behaviour();
};

void TestHostile::everyBehaviourIsExpected()
{
    QStringList listed;
    const QList<QByteArray> lines = runPeer(QStringLiteral("--list")).trimmed().split('\n');
    for (const QByteArray& line : lines)
        listed += QString::fromLatin1(line.left(line.indexOf('\t')));
    QStringList expected;
    for (const Expectation& expectation : expectations())
        expected += QLatin1String(expectation.behaviour);
    QCOMPARE(expected, listed);
}

void TestHostile::behaviour_data()
{
    QTest::addColumn<int>("index");
    for (int index = 0; index < expectations().size(); ++index)
        QTest::newRow(expectations().at(index).behaviour) << index;
}

void TestHostile::behaviour()
{
    QFETCH(int, index);
    const Expectation& expected = expectations().at(index);
    const QByteArray output = runPeer(QLatin1String(expected.behaviour));
    const QJsonObject report = QJsonDocument::fromJson(output).object();
    const QByteArray told = output.left(4000);

    QVERIFY2(!report.isEmpty(), "the peer reported nothing");
    QVERIFY2(report.value(QStringLiteral("failures")).toArray().isEmpty(), told.constData());
    QCOMPARE(report.value(QStringLiteral("answers")).toBool(), expected.exitCode == alive);
    QCOMPARE(report.value(QStringLiteral("exitCode")).toInt(alive), qMax(0, expected.exitCode));
    QCOMPARE(report.value(QStringLiteral("visible")).toInt(), expected.visible);
    QCOMPARE(report.value(QStringLiteral("hidden")).toInt(), expected.hidden);
    QVector<bool> requested;
    const QJsonArray requests = report.value(QStringLiteral("requests")).toArray();
    for (const QJsonValue& request : requests)
        requested += request.toObject()
                         .value(QStringLiteral("args"))
                         .toObject()
                         .value(QStringLiteral("enabled"))
                         .toBool();
    QCOMPARE(requested, expected.requested);
    QVERIFY2(logMatches(report.value(QStringLiteral("log")).toArray(), expected.log), told.constData());
}

QTEST_GUILESS_MAIN(TestHostile)

#include "tst_hostile.moc"
