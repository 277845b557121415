#include "link/FieldReaders.h"
#include "link/LinkSuites.h"

#include <QJsonArray>
#include <QJsonValue>
#include <QTest>

#include <limits>

using namespace MinibarHelperProtocol;

class FieldReadersSuite final : public QObject
{
    Q_OBJECT

private slots:
    void positiveIntegers_data();
    void positiveIntegers();
    void aReaderTouchesItsTargetOnlyOnSuccess();
};

void FieldReadersSuite::positiveIntegers_data()
{
    QTest::addColumn<QJsonValue>("value");
    QTest::addColumn<int>("expected"); // 0: refused
    QTest::newRow("1") << QJsonValue(1) << 1;
    QTest::newRow("1.0") << QJsonValue(1.0) << 1;
    QTest::newRow("2147483647") << QJsonValue(2147483647.0) << 2147483647;
    QTest::newRow("true") << QJsonValue(true) << 0;
    QTest::newRow("text 7") << QJsonValue(QStringLiteral("7")) << 0;
    QTest::newRow("null") << QJsonValue() << 0;
    QTest::newRow("NaN") << QJsonValue(std::numeric_limits<double>::quiet_NaN()) << 0;
    QTest::newRow("-infinite") << QJsonValue(-std::numeric_limits<double>::infinity()) << 0;
    QTest::newRow("just below 1") << QJsonValue(0.9999999999999999) << 0;
    QTest::newRow("just above the largest") << QJsonValue(2147483647.5) << 0;
}

void FieldReadersSuite::positiveIntegers()
{
    QFETCH(QJsonValue, value);
    QFETCH(int, expected);
    int target = -9;
    const bool accepted = readPositiveInteger({{QStringLiteral("k"), value}}, QLatin1String("k"), &target);
    QCOMPARE(accepted, expected != 0);
    QCOMPARE(target, expected != 0 ? expected : -9);
}

void FieldReadersSuite::aReaderTouchesItsTargetOnlyOnSuccess()
{
    const QLatin1String key("k");
    bool flag = true;
    QString text = QStringLiteral("old");
    QJsonArray array = {1};
    double number = 3;
    QVERIFY(!readBool({}, key, &flag));
    QVERIFY(!readString({}, key, &text));
    QVERIFY(!readArray({}, key, &array));
    QVERIFY(!readFiniteNumber({}, key, &number));
    QVERIFY(flag && text == QStringLiteral("old") && array.size() == 1 && number == 3);
    QVERIFY(readBool({{key, false}}, key, &flag) && !flag);
    QVERIFY(readString({{key, QString()}}, key, &text) && text.isEmpty());
    QVERIFY(readArray({{key, QJsonArray()}}, key, &array) && array.isEmpty());
    QVERIFY(readFiniteNumber({{key, -0.5}}, key, &number) && number == -0.5);
}

std::unique_ptr<QObject> makeFieldReadersSuite()
{
    return std::make_unique<FieldReadersSuite>();
}

#include "FieldReadersSuite.moc"
