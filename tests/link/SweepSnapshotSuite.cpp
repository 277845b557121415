#include "link/LinkSuites.h"
#include "link/SweepSnapshot.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>
#include <QTest>
#include <QVector>

#include <limits>

using namespace MinibarHelperProtocol;
using Plans = QVector<SweepPlanId>;

Q_DECLARE_METATYPE(SweepPlanId)

namespace {

const auto F = SweepPlanId::FrequencyScan;
const auto L = SweepPlanId::LevelScan;

QJsonObject object(const char* json)
{
    const QJsonDocument document = QJsonDocument::fromJson(json);
    Q_ASSERT(document.isObject());
    return document.object();
}

QJsonObject validSweep()
{
    return object(R"({"available": true, "revision": 7, "enabled": true, "selectedPlanId": "lscan",
                      "frequencyPlan": {"startHz": 1e6, "stopHz": 2e6, "stepHz": 1000},
                      "levelPlan": {"startDbm": -30, "stopDbm": 5.5, "stepDb": 0.5},
                      "dwellSeconds": 0.25, "supportedPlanIds": ["lscan", "fscan"]})");
}

// The valid sweep with the member at `path` ("key" or "object/key") replaced, or removed when undefined.
QJsonObject changed(QJsonObject sweep, const QString& path, const QJsonValue& value)
{
    const int slash = path.indexOf(QLatin1Char('/'));
    if (slash < 0) {
        value.isUndefined() ? sweep.remove(path) : void(sweep.insert(path, value));
        return sweep;
    }
    const QString outer = path.left(slash);
    sweep.insert(outer, changed(sweep.value(outer).toObject(), path.mid(slash + 1), value));
    return sweep;
}

// A record that no parser makes, to see that it is left alone.
SweepSnapshot unlikely()
{
    SweepSnapshot sweep;
    sweep.revision = 4711;
    sweep.supportedPlanIds = {L};
    sweep.settings.startHz = 42;
    return sweep;
}

} // namespace

class SweepSnapshotSuite final : public QObject
{
    Q_OBJECT

private slots:
    void planWords_data();
    void planWords();
    void defaults();
    void equality_data();
    void equality();
    void aValidSweepIsReadCompletely();
    void aFaultIsNamed_data();
    void aFaultIsNamed();
    void theFirstFaultIsNamed();
    void aMissingSettingIsNamedInOrder();
    void aSweepIsAccepted_data();
    void aSweepIsAccepted();
    void theErrorNeedNotBeAskedFor();
    void writtenSettingsReadBack();
};

void SweepSnapshotSuite::planWords_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("word");
    QTest::newRow("none") << 0 << QString();
    QTest::newRow("fscan") << 1 << QStringLiteral("fscan");
    QTest::newRow("lscan") << 2 << QStringLiteral("lscan");
    QTest::newRow("unsupported") << 3 << QStringLiteral("unsupported");
}

void SweepSnapshotSuite::planWords()
{
    QFETCH(int, value);
    QFETCH(QString, word);
    QCOMPARE(planWord(static_cast<SweepPlanId>(value)), word);
    QCOMPARE(planOfWord(word), static_cast<SweepPlanId>(value));
    QCOMPARE(planOfWord(word.toUpper() + QLatin1Char(' ')), SweepPlanId::None);
    QCOMPARE(planWord(static_cast<SweepPlanId>(4)), QString());
}

void SweepSnapshotSuite::defaults()
{
    const SweepSnapshot sweep;
    QCOMPARE(sweep.available, false);
    QCOMPARE(sweep.revision, 0);
    QVERIFY(sweep.supportedPlanIds.isEmpty());
    QCOMPARE(sweep.settings.enabled, false);
    QCOMPARE(sweep.settings.selectedPlanId, SweepPlanId::FrequencyScan);
    QCOMPARE(sweep.settings.startHz, 1e9);
    QCOMPARE(sweep.settings.stopHz, 2e9);
    QCOMPARE(sweep.settings.stepHz, 1e7);
    QCOMPARE(sweep.settings.startDbm, -20.0);
    QCOMPARE(sweep.settings.stopDbm, -19.0);
    QCOMPARE(sweep.settings.stepDb, 1.0);
    QCOMPARE(sweep.settings.dwellSeconds, 0.001);
}

void SweepSnapshotSuite::equality_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QJsonValue>("value");
    QTest::newRow("available") << QStringLiteral("available") << QJsonValue(false);
    QTest::newRow("revision") << QStringLiteral("revision") << QJsonValue(8);
    QTest::newRow("enabled") << QStringLiteral("enabled") << QJsonValue(false);
    QTest::newRow("plan") << QStringLiteral("selectedPlanId") << QJsonValue(QStringLiteral("fscan"));
    for (const char* path : {"frequencyPlan/startHz", "frequencyPlan/stopHz", "frequencyPlan/stepHz",
                             "levelPlan/startDbm", "levelPlan/stopDbm", "levelPlan/stepDb", "dwellSeconds"})
        QTest::newRow(path) << QString::fromLatin1(path) << QJsonValue(123.5);
    QTest::newRow("order of the plans")
        << QStringLiteral("supportedPlanIds")
        << QJsonValue(QJsonArray{QStringLiteral("fscan"), QStringLiteral("lscan")});
}

void SweepSnapshotSuite::equality()
{
    QFETCH(QString, path);
    QFETCH(QJsonValue, value);
    SweepSnapshot left;
    SweepSnapshot right;
    QVERIFY(parseSweepSnapshot(validSweep(), &left));
    right = left;
    QVERIFY(left == right);
    right.settings.stepDb = left.settings.stepDb = std::numeric_limits<double>::quiet_NaN();
    QVERIFY2(left != right, "a NaN is a change");
    QVERIFY(parseSweepSnapshot(validSweep(), &left));
    QVERIFY(parseSweepSnapshot(changed(validSweep(), path, value), &right));
    QVERIFY(left != right);
}

void SweepSnapshotSuite::aValidSweepIsReadCompletely()
{
    SweepSnapshot sweep = unlikely();
    QString error = QStringLiteral("untouched");
    QVERIFY(parseSweepSnapshot(validSweep(), &sweep, &error));
    QCOMPARE(error, QStringLiteral("untouched"));
    QCOMPARE(sweep.available, true);
    QCOMPARE(sweep.revision, 7);
    QCOMPARE(sweep.supportedPlanIds, Plans({L, F}));
    QCOMPARE(sweep.settings.enabled, true);
    QCOMPARE(sweep.settings.selectedPlanId, L);
    QCOMPARE(sweep.settings.startHz, 1e6);
    QCOMPARE(sweep.settings.stopHz, 2e6);
    QCOMPARE(sweep.settings.stepHz, 1000.0);
    QCOMPARE(sweep.settings.startDbm, -30.0);
    QCOMPARE(sweep.settings.stopDbm, 5.5);
    QCOMPARE(sweep.settings.stepDb, 0.5);
    QCOMPARE(sweep.settings.dwellSeconds, 0.25);
}

void SweepSnapshotSuite::aFaultIsNamed_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QJsonValue>("value");
    QTest::addColumn<QString>("message");
    const auto row = [](const char* path, const QJsonValue& value, const char* kind,
                        const QByteArray& message) {
        QTest::addRow("%s %s", path, kind)
            << QString::fromLatin1(path) << value << QString::fromLatin1(message);
    };
    const QJsonValue missing(QJsonValue::Undefined);
    const QJsonValue text(QStringLiteral("1"));
    const QJsonValue infinite(std::numeric_limits<double>::infinity());
    row("available", missing, "missing", "Expected boolean field 'available'.");
    row("available", 1, "number", "Expected boolean field 'available'.");
    row("revision", missing, "missing", "Expected numeric field 'revision'.");
    row("revision", text, "text", "Expected numeric field 'revision'.");
    for (const double bad : {0.0, -3.0, 2.5, 1.5, 0.5, 1e300, 2147483648.0})
        QTest::addRow("revision %g", bad) << QStringLiteral("revision") << QJsonValue(bad)
                                          << QStringLiteral("Field 'revision' must be a positive integer.");
    row("revision", infinite, "infinite", "Field 'revision' must be a positive integer.");
    row("enabled", missing, "missing", "Expected boolean field 'enabled'.");
    row("enabled", QJsonValue(), "null", "Expected boolean field 'enabled'.");
    row("selectedPlanId", missing, "missing", "Expected string field 'selectedPlanId'.");
    row("selectedPlanId", 1, "number", "Expected string field 'selectedPlanId'.");
    row("selectedPlanId", QString(), "empty", "Unsupported Sweep plan id.");
    row("selectedPlanId", QStringLiteral("FSCAN"), "upper case", "Unsupported Sweep plan id.");
    for (const char* plan : {"frequencyPlan", "levelPlan"}) {
        const char* message = "Sweep request requires frequencyPlan and levelPlan objects.";
        row(plan, missing, "missing", message);
        row(plan, QJsonArray(), "array", message);
    }
    for (const char* path : {"frequencyPlan/startHz", "frequencyPlan/stopHz", "frequencyPlan/stepHz",
                             "levelPlan/startDbm", "levelPlan/stopDbm", "levelPlan/stepDb", "dwellSeconds"}) {
        const QByteArray key = QByteArray(path).split('/').last();
        row(path, missing, "missing", "Expected numeric field '" + key + "'.");
        row(path, text, "text", "Expected numeric field '" + key + "'.");
        row(path, infinite, "infinite", "Field '" + key + "' must be finite.");
        row(path, std::numeric_limits<double>::quiet_NaN(), "NaN", "Field '" + key + "' must be finite.");
    }
    row("supportedPlanIds", missing, "missing", "Expected array field 'supportedPlanIds'.");
    row("supportedPlanIds", QJsonObject(), "object", "Expected array field 'supportedPlanIds'.");
    row("supportedPlanIds", QJsonArray{QStringLiteral("lscan"), 2}, "number among words",
        "Sweep plan ids must be strings.");
    const char* unsupported = "Sweep snapshot does not support its selected plan.";
    row("supportedPlanIds", QJsonArray(), "empty", unsupported);
    row("supportedPlanIds", QJsonArray{QStringLiteral("fscan")}, "without the selected", unsupported);
    row("supportedPlanIds", QJsonArray{QStringLiteral("unsupported")}, "unsupported alone", unsupported);
    row("selectedPlanId", QStringLiteral("unsupported"), "unsupported though available", unsupported);
}

void SweepSnapshotSuite::aFaultIsNamed()
{
    QFETCH(QString, path);
    QFETCH(QJsonValue, value);
    QFETCH(QString, message);
    SweepSnapshot sweep = unlikely();
    QString error;
    QVERIFY(!parseSweepSnapshot(changed(validSweep(), path, value), &sweep, &error));
    QCOMPARE(error, message);
    QVERIFY2(sweep == unlikely(), "the target was touched");
}

// Takes the faults away one by one, in the order in which they are to be found.
void SweepSnapshotSuite::theFirstFaultIsNamed()
{
    QJsonObject sweep;
    const QJsonObject valid = validSweep();
    const auto fault = [&] {
        SweepSnapshot target;
        QString error;
        return parseSweepSnapshot(sweep, &target, &error) ? QStringLiteral("none") : error;
    };
    const auto mend = [&](const char* key) {
        sweep.insert(QString::fromLatin1(key), valid.value(QString::fromLatin1(key)));
    };
    sweep.insert(QStringLiteral("frequencyPlan"), QJsonObject());
    QCOMPARE(fault(), QStringLiteral("Expected boolean field 'available'."));
    mend("available");
    QCOMPARE(fault(), QStringLiteral("Expected numeric field 'revision'."));
    mend("revision");
    QCOMPARE(fault(), QStringLiteral("Expected boolean field 'enabled'."));
    mend("enabled");
    QCOMPARE(fault(), QStringLiteral("Expected string field 'selectedPlanId'."));
    sweep.insert(QStringLiteral("selectedPlanId"), QStringLiteral("?"));
    QCOMPARE(fault(), QStringLiteral("Unsupported Sweep plan id."));
    mend("selectedPlanId");
    QCOMPARE(fault(), QStringLiteral("Sweep request requires frequencyPlan and levelPlan objects."));
    sweep.insert(QStringLiteral("levelPlan"), QJsonObject());
    QCOMPARE(fault(), QStringLiteral("Expected numeric field 'startHz'."));
    mend("frequencyPlan");
    QCOMPARE(fault(), QStringLiteral("Expected numeric field 'startDbm'."));
    mend("levelPlan");
    QCOMPARE(fault(), QStringLiteral("Expected numeric field 'dwellSeconds'."));
    mend("dwellSeconds");
    QCOMPARE(fault(), QStringLiteral("Expected array field 'supportedPlanIds'."));
    sweep.insert(QStringLiteral("supportedPlanIds"), QJsonArray{QStringLiteral("?"), 1});
    QCOMPARE(fault(), QStringLiteral("Sweep plan ids must be strings."));
    mend("supportedPlanIds");
    QCOMPARE(fault(), QStringLiteral("none"));
}

void SweepSnapshotSuite::aMissingSettingIsNamedInOrder()
{
    QJsonObject sweep = validSweep();
    sweep.insert(QStringLiteral("frequencyPlan"), QJsonObject());
    sweep.insert(QStringLiteral("levelPlan"), QJsonObject());
    sweep.remove(QStringLiteral("dwellSeconds"));
    for (const char* path : {"frequencyPlan/startHz", "frequencyPlan/stopHz", "frequencyPlan/stepHz",
                             "levelPlan/startDbm", "levelPlan/stopDbm", "levelPlan/stepDb", "dwellSeconds"}) {
        SweepSettings settings;
        QString error;
        QVERIFY(!parseSweepSettings(sweep, &settings, &error));
        const QString key = QString::fromLatin1(path).section(QLatin1Char('/'), -1);
        QCOMPARE(error, QStringLiteral("Expected numeric field '%1'.").arg(key));
        QVERIFY(settings == SweepSettings());
        sweep = changed(sweep, QString::fromLatin1(path), 1);
    }
    SweepSettings settings;
    QVERIFY(parseSweepSettings(sweep, &settings));
}

void SweepSnapshotSuite::aSweepIsAccepted_data()
{
    QTest::addColumn<QByteArray>("change");
    QTest::addColumn<Plans>("plans");
    QTest::newRow("each plan once, in order of appearance, others dropped")
        << QByteArray(R"({"supportedPlanIds": ["lscan", "fscan", "lscan", "unsupported", "LSCAN", ""]})")
        << Plans{L, F};
    QTest::newRow("unavailable with an unsupported plan")
        << QByteArray(
               R"({"available": false, "selectedPlanId": "unsupported", "supportedPlanIds": ["fscan"]})")
        << Plans{F};
    QTest::newRow("unavailable with a supported plan")
        << QByteArray(R"({"available": false})") << Plans{L, F};
    QTest::newRow("revision 1.0") << QByteArray(R"({"revision": 1.0})") << Plans{L, F};
    QTest::newRow("largest revision") << QByteArray(R"({"revision": 2147483647})") << Plans{L, F};
    QTest::newRow("further keys") << QByteArray(R"({"more": [1]})") << Plans{L, F};
}

void SweepSnapshotSuite::aSweepIsAccepted()
{
    QFETCH(QByteArray, change);
    QFETCH(Plans, plans);
    QJsonObject object = validSweep();
    const QJsonObject changes = QJsonDocument::fromJson(change).object();
    for (auto it = changes.begin(); it != changes.end(); ++it)
        object.insert(it.key(), it.value());
    SweepSnapshot sweep;
    QString error;
    QVERIFY2(parseSweepSnapshot(object, &sweep, &error), qPrintable(error));
    QCOMPARE(sweep.supportedPlanIds, plans);
    QCOMPARE(sweep.available, object.value(QStringLiteral("available")).toBool());
    QCOMPARE(sweep.revision, object.value(QStringLiteral("revision")).toInt());
}

void SweepSnapshotSuite::theErrorNeedNotBeAskedFor()
{
    SweepSnapshot sweep = unlikely();
    QVERIFY(!parseSweepSnapshot({}, &sweep));
    QVERIFY(!parseSweepSettings({}, &sweep.settings));
    // Unavailable and unsupported is no excuse for an empty list.
    const QJsonObject empty =
        changed(changed(changed(validSweep(), QStringLiteral("available"), false),
                        QStringLiteral("selectedPlanId"), QStringLiteral("unsupported")),
                QStringLiteral("supportedPlanIds"), QJsonArray());
    QVERIFY(!parseSweepSnapshot(empty, &sweep));
    QVERIFY(sweep == unlikely());
}

void SweepSnapshotSuite::writtenSettingsReadBack()
{
    SweepSettings settings;
    settings.enabled = true;
    settings.selectedPlanId = SweepPlanId::Unsupported;
    settings.startHz = 123456789.123456;
    settings.dwellSeconds = 1e-12;
    const QByteArray text = QJsonDocument(writeSweepSettings(settings)).toJson(QJsonDocument::Compact);
    SweepSettings readBack;
    QVERIFY(parseSweepSettings(QJsonDocument::fromJson(text).object(), &readBack));
    QVERIFY(readBack == settings);
}

std::unique_ptr<QObject> makeSweepSnapshotSuite()
{
    return std::make_unique<SweepSnapshotSuite>();
}

#include "SweepSnapshotSuite.moc"
