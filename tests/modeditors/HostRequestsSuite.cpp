#include "modeditors/HostSuites.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QMetaMethod>
#include <QMetaObject>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

using MinibarHelperProtocol::ModChangeRequest;

namespace {

QByteArray requestText(const QSignalSpy& requests, int index)
{
    const auto request = requests.at(index).first().value<ModChangeRequest>();
    return QJsonDocument(request.toJson()).toJson(QJsonDocument::Compact);
}

} // namespace

// What leaves the host, and what it passes on to its editor.
class HostRequestsSuite final : public QObject
{
    Q_OBJECT

private slots:
    void everyRequestMakesTheNextSnapshotApply_data();
    void everyRequestMakesTheNextSnapshotApply();
    void anEnabledEditIsARequest_data();
    void anEnabledEditIsARequest();
    void anActionIsARequest_data();
    void anActionIsARequest();
    void aRequestCarriesTheNewestRevision();
    void applyingEmitsNothing();
    void anAnswerWithinTheRequestIsApplied();
    void theEditorsOperationsAreReached();
    void withoutAnEditorTheOperationsDoNothing();
    void numericEditRequestedIsPassedOn();
    void theSignalsAreDeclaredAsAgreed();
};

void HostRequestsSuite::everyRequestMakesTheNextSnapshotApply_data()
{
    QTest::addColumn<QString>("edit");
    QTest::addColumn<int>("applications");
    QTest::newRow("action") << "action" << 2;
    QTest::newRow("enabled") << "enabled" << 2;
    QTest::newRow("numeric value") << "number" << 2;
    QTest::newRow("empty action") << "" << 1;
}

void HostRequestsSuite::everyRequestMakesTheNextSnapshotApply()
{
    QFETCH(const QString, edit);
    QFETCH(const int, applications);
    RemoteModEditorHost host(createFakeEditor);
    const QSignalSpy requests(&host, &RemoteModEditorHost::changeRequested);
    const Item item;
    item.applyTo(host);
    FakeEditor* const editor = editorOf(host);
    editor->fields.insert(QStringLiteral("x"), {});
    if (edit == QLatin1String("enabled")) {
        emit editor->enabledEdited();
    } else if (edit == QLatin1String("number")) {
        host.applyNumericValue(QStringLiteral("x"), 1);
    } else {
        emit editor->actionEdited(edit, {});
    }
    QCOMPARE(requests.count(), applications - 1);
    QCOMPARE(editor->applications, 1);
    item.applyTo(host);
    QCOMPARE(editor->applications, applications);
    item.applyTo(host);
    QCOMPARE(editor->applications, applications);
}

void HostRequestsSuite::anEnabledEditIsARequest_data()
{
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<int>("revision");
    QTest::addColumn<QByteArray>("request");
    QTest::newRow("on") << true << 7
                        << QByteArray(R"({"businessId":"b1","enabled":true,"expectedRevision":7})");
    QTest::newRow("off") << false << 7
                         << QByteArray(R"({"businessId":"b1","enabled":false,"expectedRevision":7})");
    QTest::newRow("no revision") << true << 0 << QByteArray(R"({"businessId":"b1","enabled":true})");
}

void HostRequestsSuite::anEnabledEditIsARequest()
{
    QFETCH(const bool, enabled);
    QFETCH(const int, revision);
    RemoteModEditorHost host(createFakeEditor);
    const QSignalSpy requests(&host, &RemoteModEditorHost::changeRequested);
    Item item;
    item.revision = revision;
    item.enabled = !enabled;
    item.applyTo(host);
    FakeEditor* const editor = editorOf(host);
    editor->enabled = enabled;
    emit editor->enabledEdited();
    QCOMPARE(requests.count(), 1);
    QTEST(requestText(requests, 0), "request");
    QCOMPARE(requests.first().first().value<ModChangeRequest>().expectedRevision, revision);
}

void HostRequestsSuite::anActionIsARequest_data()
{
    QTest::addColumn<QString>("action");
    QTest::addColumn<QJsonObject>("arguments");
    QTest::addColumn<QByteArray>("request"); // empty: none
    QTest::newRow("set-field") << "set-field" << json(R"({"key":"PN","value":9})")
                               << QByteArray(R"({"action":"set-field","args":{"key":"PN","value":9},)"
                                             R"("businessId":"b1","expectedRevision":1})");
    QTest::newRow("no arguments")
        << "clear-file" << QJsonObject()
        << QByteArray(R"({"action":"clear-file","args":{},"businessId":"b1","expectedRevision":1})");
    QTest::newRow("no action") << "" << json(R"({"key":"PN"})") << QByteArray();
}

void HostRequestsSuite::anActionIsARequest()
{
    QFETCH(const QString, action);
    QFETCH(const QJsonObject, arguments);
    QFETCH(const QByteArray, request);
    RemoteModEditorHost host(createFakeEditor);
    const QSignalSpy requests(&host, &RemoteModEditorHost::changeRequested);
    Item item;
    item.enabled = true;
    item.applyTo(host);
    emit editorOf(host)->actionEdited(action, arguments);
    QCOMPARE(requests.count(), request.isEmpty() ? 0 : 1);
    if (!requests.isEmpty()) {
        QCOMPARE(requestText(requests, 0), request);
    }
}

void HostRequestsSuite::aRequestCarriesTheNewestRevision()
{
    RemoteModEditorHost host(createFakeEditor);
    const QSignalSpy requests(&host, &RemoteModEditorHost::changeRequested);
    Item item;
    item.applyTo(host);
    item.revision = 12;
    item.applyTo(host);
    QCOMPARE(editorOf(host)->applications, 1);
    emit editorOf(host)->actionEdited(QStringLiteral("a"), {});
    emit editorOf(host)->enabledEdited();
    QCOMPARE(requests.count(), 2);
    for (const QList<QVariant>& request : requests) {
        QCOMPARE(request.first().value<ModChangeRequest>().expectedRevision, 12);
    }
}

void HostRequestsSuite::applyingEmitsNothing()
{
    RemoteModEditorHost host(createFakeEditor);
    const QSignalSpy requests(&host, &RemoteModEditorHost::changeRequested);
    const QSignalSpy edits(&host, &RemoteModEditorHost::numericEditRequested);
    Item item;
    for (int i = 0; i < 6; ++i) {
        item.state.insert(QStringLiteral("i"), i / 2);
        item.enabled = i % 2;
        item.key = QString::number(i / 3);
        item.applyTo(host);
    }
    QCOMPARE(requests.count() + edits.count(), 0);
}

// The main process may answer before the signal has returned.
void HostRequestsSuite::anAnswerWithinTheRequestIsApplied()
{
    RemoteModEditorHost host(createFakeEditor);
    Item item;
    item.applyTo(host);
    connect(&host, &RemoteModEditorHost::changeRequested, this, [&] {
        item.state = json(R"({"a":1})");
        item.applyTo(host);
    });
    FakeEditor* const editor = editorOf(host);
    emit editor->actionEdited(QStringLiteral("a"), {});
    QCOMPARE(editor->applications, 2);
    QCOMPARE(editor->state, item.state);
    item.applyTo(host);
    QCOMPARE(editor->applications, 2);
}

void HostRequestsSuite::theEditorsOperationsAreReached()
{
    RemoteModEditorHost host(createFakeEditor);
    const QSignalSpy requests(&host, &RemoteModEditorHost::changeRequested);
    Item().applyTo(host);
    FakeEditor* const editor = editorOf(host);
    NumericFieldSpec field;
    field.describe(QStringLiteral("PN"), QStringLiteral("PN"), 9, 1, 0, true);
    editor->fields.insert(field.key, field);
    NumericFieldSpec spec;
    QVERIFY(!host.describeNumericField(QStringLiteral("Other"), spec));
    QVERIFY(host.describeNumericField(field.key, spec));
    QCOMPARE(spec.value, 9.0);
    host.setNumericFieldActive(field.key, true);
    QCOMPARE(editor->activeKey, field.key);
    QVERIFY(editor->isActive);
    host.setNumericFieldActive(field.key, false);
    QVERIFY(!editor->isActive);
    host.applyNumericValue(QStringLiteral("Other"), 3);
    QCOMPARE(requests.count(), 0);
    host.applyNumericValue(field.key, 7.6);
    QCOMPARE(requests.count(), 1);
    QCOMPARE(requestText(requests, 0), QByteArray(R"({"action":"set-field","args":{"key":"PN","value":8},)"
                                                  R"("businessId":"b1","expectedRevision":1})"));
}

void HostRequestsSuite::withoutAnEditorTheOperationsDoNothing()
{
    RemoteModEditorHost host;
    const QSignalSpy requests(&host, &RemoteModEditorHost::changeRequested);
    NumericFieldSpec spec;
    QVERIFY(!host.describeNumericField(QStringLiteral("PN"), spec));
    host.applyNumericValue(QStringLiteral("PN"), 1);
    host.setNumericFieldActive(QStringLiteral("PN"), true);
    QCOMPARE(requests.count(), 0);
}

void HostRequestsSuite::numericEditRequestedIsPassedOn()
{
    RemoteModEditorHost host(createFakeEditor);
    const QSignalSpy edits(&host, &RemoteModEditorHost::numericEditRequested);
    const QSignalSpy requests(&host, &RemoteModEditorHost::changeRequested);
    const Item item;
    item.applyTo(host);
    FakeEditor* const editor = editorOf(host);
    QPushButton button;
    emit editor->numericEditRequested(QStringLiteral("PN"), &button);
    QCOMPARE(edits.count(), 1);
    QCOMPARE(edits.first().first().toString(), QStringLiteral("PN"));
    QCOMPARE(edits.first().at(1).value<QAbstractButton*>(), &button);
    QCOMPARE(requests.count(), 0);
    item.applyTo(host); // asking for the keyboard changes nothing
    QCOMPARE(editor->applications, 1);
}

void HostRequestsSuite::theSignalsAreDeclaredAsAgreed()
{
    const QMetaObject& meta = RemoteModEditorHost::staticMetaObject;
    const QMetaMethod change = meta.method(meta.methodOffset());
    QCOMPARE(change.methodSignature(),
             QByteArray("changeRequested(MinibarHelperProtocol::ModChangeRequest)"));
    QCOMPARE(change.parameterNames(), QList<QByteArray>{"request"});
    const QMetaMethod edit = meta.method(meta.methodOffset() + 1);
    QCOMPARE(edit.methodSignature(), QByteArray("numericEditRequested(QString,QAbstractButton*)"));
    QCOMPARE(edit.parameterNames(), (QList<QByteArray>{"key", "anchor"}));
}

std::unique_ptr<QObject> makeHostRequestsSuite()
{
    return std::make_unique<HostRequestsSuite>();
}

#include "HostRequestsSuite.moc"
