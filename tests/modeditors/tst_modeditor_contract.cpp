#include "link/Keys.h"
#include "modeditors/FakeEditor.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>
#include <QMetaMethod>
#include <QMetaObject>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <limits>

namespace {

QByteArray compact(const QJsonObject& object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

NumericFieldSpec field(bool integerOnly)
{
    NumericFieldSpec spec;
    spec.describe(QStringLiteral("PN"), QStringLiteral("PN"), 9, 1, 0, integerOnly);
    return spec;
}

} // namespace

// What every editor inherits, and the description of a numeric field.
class ModEditorContractTest final : public QObject
{
    Q_OBJECT

private slots:
    void aNewSpecDescribesNothing();
    void describeSetsTheFieldInOneCall_data();
    void describeSetsTheFieldInOneCall();
    void describeForgetsTheFieldBefore();
    void boundsTellThatTheyApply();
    void aCommittedValueIsTheEditOfAField_data();
    void aCommittedValueIsTheEditOfAField();
    void aFieldThatCannotBeDescribedTakesNoValue();
    void anyValueCanBeEdited_data();
    void anyValueCanBeEdited();
    void theWordsAreThoseOfTheLink();
    void theSignalsAreDeclaredAsAgreed_data();
    void theSignalsAreDeclaredAsAgreed();
};

void ModEditorContractTest::aNewSpecDescribesNothing()
{
    const NumericFieldSpec spec;
    QCOMPARE(spec.key + spec.title + spec.unitType + spec.unitText + spec.auxText, QString());
    QCOMPARE(spec.value, 0.0);
    QCOMPARE(spec.step, 0.0);
    QCOMPARE(spec.minimum, 0.0);
    QCOMPARE(spec.maximum, 0.0);
    QCOMPARE(spec.decimals, -1);
    QVERIFY(!spec.hasStep);
    QVERIFY(!spec.hasMinimum);
    QVERIFY(!spec.hasMaximum);
    QVERIFY(!spec.integerOnly);
}

void ModEditorContractTest::describeSetsTheFieldInOneCall_data()
{
    QTest::addColumn<double>("step");
    QTest::addColumn<bool>("hasStep");
    QTest::newRow("step 2") << 2.0 << true;
    QTest::newRow("smallest step") << std::numeric_limits<double>::denorm_min() << true;
    QTest::newRow("step 0") << 0.0 << false;
    QTest::newRow("step -1") << -1.0 << false;
    QTest::newRow("no number") << std::numeric_limits<double>::quiet_NaN() << false;
}

void ModEditorContractTest::describeSetsTheFieldInOneCall()
{
    QFETCH(const double, step);
    NumericFieldSpec spec;
    spec.describe(QStringLiteral("key"), QStringLiteral("Title"), 7.5, step, 3, true);
    QCOMPARE(spec.key, QStringLiteral("key"));
    QCOMPARE(spec.title, QStringLiteral("Title"));
    QCOMPARE(spec.value, 7.5);
    QCOMPARE(spec.step, step);
    QTEST(spec.hasStep, "hasStep");
    QCOMPARE(spec.decimals, 3);
    QCOMPARE(spec.integerOnly, true);
    spec.describe(QStringLiteral("key"), QStringLiteral("Title"), 7.5, step);
    QCOMPARE(spec.decimals, -1);
    QCOMPARE(spec.integerOnly, false);
}

void ModEditorContractTest::describeForgetsTheFieldBefore()
{
    NumericFieldSpec spec = field(true);
    spec.unitType = QStringLiteral("unit type");
    spec.unitText = QStringLiteral("unit");
    spec.auxText = QStringLiteral("125");
    spec.setMinimum(4);
    spec.setMaximum(24);
    spec.describe(QStringLiteral("other"), QStringLiteral("Other"), 0, 1);
    QCOMPARE(spec.unitType + spec.unitText + spec.auxText, QString());
    QVERIFY(!spec.hasMinimum && !spec.hasMaximum);
    QCOMPARE(spec.minimum, 0.0);
    QCOMPARE(spec.maximum, 0.0);
}

void ModEditorContractTest::boundsTellThatTheyApply()
{
    NumericFieldSpec spec = field(false);
    spec.setMinimum(0);
    QVERIFY(spec.hasMinimum && !spec.hasMaximum);
    spec.setMaximum(-3.5);
    QVERIFY(spec.hasMaximum);
    QCOMPARE(spec.maximum, -3.5);
}

void ModEditorContractTest::aCommittedValueIsTheEditOfAField_data()
{
    QTest::addColumn<bool>("integerOnly");
    QTest::addColumn<double>("value");
    QTest::addColumn<QByteArray>("arguments"); // empty: nothing is emitted
    const auto row = [](const char* name, bool integerOnly, double value, const char* json) {
        const QByteArray arguments =
            *json ? QByteArray(R"({"key":"PN","value":)") + json + '}' : QByteArray();
        QTest::newRow(name) << integerOnly << value << arguments;
    };
    row("7.6 of integers", true, 7.6, "8");
    row("7.4 of integers", true, 7.4, "7");
    row("half upward", true, 2.5, "3");
    row("half downward", true, -2.5, "-3");
    row("small half", true, 0.5, "1");
    row("just below the half", true, 0.49999999999999994, "0");
    row("below zero to zero", true, -0.4, "0");
    row("large integer", true, 9007199254740991.0, "9007199254740991");
    row("2.5 as it is", false, 2.5, "2.5");
    row("-7.6 as it is", false, -7.6, "-7.6");
    row("all digits", false, 2412345678.90123, "2412345678.90123");
    row("NaN", false, std::numeric_limits<double>::quiet_NaN(), "");
    row("infinity", false, std::numeric_limits<double>::infinity(), "");
    row("NaN of integers", true, std::numeric_limits<double>::quiet_NaN(), "");
    row("minus infinity of integers", true, -std::numeric_limits<double>::infinity(), "");
}

void ModEditorContractTest::aCommittedValueIsTheEditOfAField()
{
    QFETCH(const bool, integerOnly);
    QFETCH(const double, value);
    QFETCH(const QByteArray, arguments);
    FakeEditor editor;
    editor.fields.insert(QStringLiteral("PN"), field(integerOnly));
    const QSignalSpy actions(&editor, &RemoteModEditor::actionEdited);
    const QSignalSpy switches(&editor, &RemoteModEditor::enabledEdited);
    editor.applyNumericValue(QStringLiteral("PN"), value);
    QCOMPARE(switches.count(), 0);
    QCOMPARE(actions.count(), arguments.isEmpty() ? 0 : 1);
    if (!actions.isEmpty()) {
        QCOMPARE(actions.first().first().toString(), QStringLiteral("set-field"));
        QCOMPARE(compact(actions.first().at(1).toJsonObject()), arguments);
    }
}

void ModEditorContractTest::aFieldThatCannotBeDescribedTakesNoValue()
{
    FakeEditor editor;
    const QSignalSpy actions(&editor, &RemoteModEditor::actionEdited);
    editor.applyNumericValue(QStringLiteral("PN"), 3);
    editor.applyNumericValue(QString(), 3);
    QCOMPARE(actions.count(), 0);
}

void ModEditorContractTest::anyValueCanBeEdited_data()
{
    QTest::addColumn<QJsonValue>("value");
    QTest::newRow("text") << QJsonValue(QStringLiteral("QAM64"));
    QTest::newRow("bool") << QJsonValue(false);
    QTest::newRow("number") << QJsonValue(4);
    QTest::newRow("array") << QJsonValue(QJsonArray{1, QStringLiteral("b")});
}

void ModEditorContractTest::anyValueCanBeEdited()
{
    QFETCH(const QJsonValue, value);
    FakeEditor editor;
    const QSignalSpy actions(&editor, &RemoteModEditor::actionEdited);
    editor.editField(QStringLiteral("a key"), value);
    QCOMPARE(actions.count(), 1);
    const QJsonObject expected{{QStringLiteral("key"), QStringLiteral("a key")},
                               {QStringLiteral("value"), value}};
    QCOMPARE(actions.first().at(1).toJsonObject(), expected);
}

// The contract may not use the link, so it spells them itself.
void ModEditorContractTest::theWordsAreThoseOfTheLink()
{
    using namespace MinibarHelperProtocol;
    FakeEditor editor;
    const QSignalSpy actions(&editor, &RemoteModEditor::actionEdited);
    editor.editField(QStringLiteral("x"), 1);
    QCOMPARE(actions.count(), 1);
    QCOMPARE(actions.first().first().toString(), QString(Actions::set_field));
    QCOMPARE(actions.first().at(1).toJsonObject().keys(), QStringList({Keys::key, Keys::value}));
}

void ModEditorContractTest::theSignalsAreDeclaredAsAgreed_data()
{
    QTest::addColumn<int>("position");
    QTest::addColumn<QByteArray>("signature");
    QTest::addColumn<QList<QByteArray>>("names");
    QTest::newRow("enabledEdited") << 0 << QByteArray("enabledEdited()") << QList<QByteArray>();
    QTest::newRow("actionEdited") << 1 << QByteArray("actionEdited(QString,QJsonObject)")
                                  << QList<QByteArray>{"action", "arguments"};
    QTest::newRow("numericEditRequested") << 2 << QByteArray("numericEditRequested(QString,QAbstractButton*)")
                                          << QList<QByteArray>{"key", "anchor"};
}

void ModEditorContractTest::theSignalsAreDeclaredAsAgreed()
{
    QFETCH(const int, position);
    const QMetaObject& meta = RemoteModEditor::staticMetaObject;
    const QMetaMethod method = meta.method(meta.methodOffset() + position);
    QCOMPARE(method.methodType(), QMetaMethod::Signal);
    QTEST(method.methodSignature(), "signature");
    QTEST(method.parameterNames(), "names");
}

QTEST_MAIN(ModEditorContractTest)

#include "tst_modeditor_contract.moc"
