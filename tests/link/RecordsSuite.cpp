#include "link/ChangeRequests.h"
#include "link/LinkSuites.h"
#include "link/ModSnapshot.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>
#include <QTest>

#include <functional>

using namespace MinibarHelperProtocol;

namespace {

QByteArray compact(const QJsonObject& object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

QJsonObject parsed(const QByteArray& json)
{
    return QJsonDocument::fromJson(json).object();
}

} // namespace

// The "mod" section and the two change requests.
class RecordsSuite final : public QObject
{
    Q_OBJECT

private slots:
    void modIsReadCompletely();
    void whatIsMissingOrWrongReadsAsEmpty_data();
    void whatIsMissingOrWrongReadsAsEmpty();
    void aBusinessWithoutIdOrTextIsLeftOut();
    void aRevisionReadsAsAnInteger_data();
    void aRevisionReadsAsAnInteger();
    void entriesDifferInEachField_data();
    void entriesDifferInEachField();
    void aSweepRequestWritesAllKeys();
    void aSweepRequestReadsBack();
    void aSweepRequestWithoutAPlanIsRefusedByTheReader();
    void aModRequestWritesWhatIsAsked_data();
    void aModRequestWritesWhatIsAsked();
    void theRequestsAreRegisteredUnderTheirFullNames();
};

void RecordsSuite::modIsReadCompletely()
{
    const ModSnapshot mod =
        parseModSnapshot(parsed(R"({"enabled": true, "enabledBusinessId": "b2", "businesses": [
        {"id": "b1", "name": "One", "text": "First", "profile": {"max": 3}, "editorKind": "digital",
         "editorState": {"rate": 1e6}, "revision": 12, "more": 1},
        {"id": "b2", "text": "Second"}]})"));
    QCOMPARE(mod.enabled, true);
    QCOMPARE(mod.enabledBusinessId, QStringLiteral("b2"));
    QCOMPARE(mod.businesses.size(), 2);
    const ModBusinessEntry& first = mod.businesses[0];
    QCOMPARE(first.id, QStringLiteral("b1"));
    QCOMPARE(first.name, QStringLiteral("One"));
    QCOMPARE(first.text, QStringLiteral("First"));
    QCOMPARE(first.profile, parsed(R"({"max": 3})"));
    QCOMPARE(first.editorKind, QStringLiteral("digital"));
    QCOMPARE(first.editorState, parsed(R"({"rate": 1e6})"));
    QCOMPARE(first.revision, 12);
    ModBusinessEntry second;
    second.id = QStringLiteral("b2");
    second.text = QStringLiteral("Second");
    QVERIFY(mod.businesses[1] == second);
}

void RecordsSuite::whatIsMissingOrWrongReadsAsEmpty_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::newRow("empty") << QByteArray("{}");
    QTest::newRow("nulls") << QByteArray(
        R"({"enabled": null, "enabledBusinessId": null, "businesses": null})");
    QTest::newRow("wrong types") << QByteArray(
        R"({"enabled": 1, "enabledBusinessId": 2, "businesses": {"id": "a"}})");
    QTest::newRow("elements that are no objects")
        << QByteArray(R"({"businesses": [1, "b", null, [], true]})");
}

void RecordsSuite::whatIsMissingOrWrongReadsAsEmpty()
{
    QFETCH(QByteArray, json);
    const ModSnapshot mod = parseModSnapshot(parsed(json));
    QCOMPARE(mod.enabled, false);
    QCOMPARE(mod.enabledBusinessId, QString());
    QCOMPARE(mod.businesses.size(), 0);
}

void RecordsSuite::aBusinessWithoutIdOrTextIsLeftOut()
{
    const ModSnapshot mod = parseModSnapshot(parsed(R"({"businesses": [
        {"id": "z", "text": "1"}, {"id": "", "text": "2"}, {"text": "3"}, {"id": 4, "text": "4"},
        {"id": "5", "text": ""}, {"id": "6", "name": "n"}, 7, {"id": "a", "text": "8", "name": ""}, {"id": " ", "text": " "}]})"));
    QStringList ids;
    for (const ModBusinessEntry& entry : mod.businesses)
        ids.append(entry.id);
    QCOMPARE(ids, QStringList({QStringLiteral("z"), QStringLiteral("a"), QStringLiteral(" ")}));
}

void RecordsSuite::aRevisionReadsAsAnInteger_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<int>("revision");
    QTest::newRow("7") << QByteArray("7") << 7;
    QTest::newRow("7.0") << QByteArray("7.0") << 7;
    QTest::newRow("-3") << QByteArray("-3") << -3;
    QTest::newRow("2.5") << QByteArray("2.5") << 0;
    QTest::newRow("1e300") << QByteArray("1e300") << 0;
    QTest::newRow("2147483648") << QByteArray("2147483648") << 0;
    QTest::newRow("true") << QByteArray("true") << 0;
    QTest::newRow("text") << QByteArray("\"7\"") << 0;
    QTest::newRow("null") << QByteArray("null") << 0;
}

void RecordsSuite::aRevisionReadsAsAnInteger()
{
    QFETCH(QByteArray, json);
    QFETCH(int, revision);
    const ModSnapshot mod =
        parseModSnapshot(parsed(R"({"businesses": [{"id": "a", "text": "A", "revision": )" + json + "}]}"));
    QCOMPARE(mod.businesses.size(), 1);
    QCOMPARE(mod.businesses[0].revision, revision);
}

using EntryChange = std::function<void(ModBusinessEntry&)>;
Q_DECLARE_METATYPE(EntryChange)

void RecordsSuite::entriesDifferInEachField_data()
{
    QTest::addColumn<EntryChange>("change");
    const QString x = QStringLiteral("x");
    QTest::newRow("id") << EntryChange([=](ModBusinessEntry& entry) { entry.id = x; });
    QTest::newRow("name") << EntryChange([=](ModBusinessEntry& entry) { entry.name = x; });
    QTest::newRow("text") << EntryChange([=](ModBusinessEntry& entry) { entry.text = x; });
    QTest::newRow("profile") << EntryChange([=](ModBusinessEntry& entry) { entry.profile.insert(x, 1); });
    QTest::newRow("editor kind") << EntryChange([=](ModBusinessEntry& entry) { entry.editorKind = x; });
    QTest::newRow("editor state") << EntryChange(
        [=](ModBusinessEntry& entry) { entry.editorState.insert(x, 1); });
    QTest::newRow("revision") << EntryChange([](ModBusinessEntry& entry) { entry.revision = 1; });
}

void RecordsSuite::entriesDifferInEachField()
{
    QFETCH(EntryChange, change);
    const ModBusinessEntry left;
    ModBusinessEntry right;
    QVERIFY(left == right);
    change(right);
    QVERIFY(left != right);
    QVERIFY(!(left == right));
}

void RecordsSuite::aSweepRequestWritesAllKeys()
{
    QCOMPARE(
        compact(SweepChangeRequest().toJson()),
        QByteArray(R"({"dwellSeconds":0.001,"enabled":false,"expectedRevision":0,)"
                   R"("frequencyPlan":{"startHz":1000000000,"stepHz":10000000,"stopHz":2000000000},)"
                   R"("levelPlan":{"startDbm":-20,"stepDb":1,"stopDbm":-19},"selectedPlanId":"fscan"})"));
}

void RecordsSuite::aSweepRequestReadsBack()
{
    SweepChangeRequest request;
    request.expectedRevision = 41;
    request.settings.enabled = true;
    request.settings.selectedPlanId = SweepPlanId::LevelScan;
    request.settings.stopHz = 6e9;
    request.settings.stepDb = 0.1;
    const QJsonObject object = parsed(compact(request.toJson()));
    QCOMPARE(object.value(QStringLiteral("expectedRevision")).toInt(), 41);
    SweepSettings settings;
    QVERIFY(parseSweepSettings(object, &settings));
    QVERIFY(settings == request.settings);
}

void RecordsSuite::aSweepRequestWithoutAPlanIsRefusedByTheReader()
{
    SweepChangeRequest request;
    request.settings.selectedPlanId = SweepPlanId::None;
    const QJsonObject object = request.toJson();
    QCOMPARE(object.value(QStringLiteral("selectedPlanId")), QJsonValue(QString()));
    SweepSettings settings;
    QString error;
    QVERIFY(!parseSweepSettings(object, &settings, &error));
    QCOMPARE(error, QStringLiteral("Unsupported Sweep plan id."));
}

using ModRequestChange = std::function<void(ModChangeRequest&)>;
Q_DECLARE_METATYPE(ModRequestChange)

void RecordsSuite::aModRequestWritesWhatIsAsked_data()
{
    QTest::addColumn<ModRequestChange>("change");
    QTest::addColumn<QByteArray>("json");
    const auto row = [](const char* name, const ModRequestChange& change, const char* json) {
        QTest::newRow(name) << change << QByteArray(json);
    };
    const QString action = QStringLiteral("set-field");
    const QJsonObject arguments{{QStringLiteral("key"), QStringLiteral("rate")}};
    row(
        "default", [](ModChangeRequest&) {}, R"({"businessId":""})");
    row(
        "business only", [](ModChangeRequest& request) { request.businessId = QStringLiteral("am"); },
        R"({"businessId":"am"})");
    row(
        "on", [](ModChangeRequest& request) { request.hasEnabled = request.enabled = true; },
        R"({"businessId":"","enabled":true})");
    row(
        "off", [](ModChangeRequest& request) { request.hasEnabled = true; },
        R"({"businessId":"","enabled":false})");
    row(
        "enabled without its flag", [](ModChangeRequest& request) { request.enabled = true; },
        R"({"businessId":""})");
    row(
        "revision 7", [](ModChangeRequest& request) { request.expectedRevision = 7; },
        R"({"businessId":"","expectedRevision":7})");
    row(
        "revision -1", [](ModChangeRequest& request) { request.expectedRevision = -1; },
        R"({"businessId":""})");
    row(
        "action without arguments", [=](ModChangeRequest& request) { request.action = action; },
        R"({"action":"set-field","args":{},"businessId":""})");
    row(
        "action with arguments",
        [=](ModChangeRequest& request) {
            request.action = action;
            request.arguments = arguments;
        },
        R"({"action":"set-field","args":{"key":"rate"},"businessId":""})");
    row(
        "arguments without an action", [=](ModChangeRequest& request) { request.arguments = arguments; },
        R"({"businessId":""})");
    row(
        "empty profile", [](ModChangeRequest& request) { request.hasProfile = true; },
        R"({"businessId":"","profile":{}})");
    row(
        "profile without its flag", [=](ModChangeRequest& request) { request.profile = arguments; },
        R"({"businessId":""})");
    row(
        "all",
        [=](ModChangeRequest& request) {
            request = {QStringLiteral("am"), 3, true, true, action, arguments, true, arguments};
        },
        R"({"action":"set-field","args":{"key":"rate"},"businessId":"am","enabled":true,"expectedRevision":3,)"
        R"("profile":{"key":"rate"}})");
}

void RecordsSuite::aModRequestWritesWhatIsAsked()
{
    QFETCH(ModRequestChange, change);
    QFETCH(QByteArray, json);
    ModChangeRequest request;
    change(request);
    QCOMPARE(compact(request.toJson()), json);
}

void RecordsSuite::theRequestsAreRegisteredUnderTheirFullNames()
{
    registerChangeRequests();
    QCOMPARE(QMetaType::type("MinibarHelperProtocol::SweepChangeRequest"), qMetaTypeId<SweepChangeRequest>());
    QCOMPARE(QMetaType::type("MinibarHelperProtocol::ModChangeRequest"), qMetaTypeId<ModChangeRequest>());
    SweepChangeRequest sent;
    sent.expectedRevision = 5;
    QCOMPARE(QVariant::fromValue(sent).value<SweepChangeRequest>().expectedRevision, 5);
}

std::unique_ptr<QObject> makeRecordsSuite()
{
    return std::make_unique<RecordsSuite>();
}

#include "RecordsSuite.moc"
