#include "formeditors/FormFixture.h"
#include "support/TouchCounter.h"

#include <QRandomGenerator>

using TestSupport::TouchCounter;

// What a form shows of a state.
class FormStateSuite final : public QObject
{
    Q_OBJECT

private slots:
    void numberIsShown_data();
    void numberIsShown();
    void choiceIsShown_data();
    void choiceIsShown();
    void knownAfterUnknownChoice();
    void switchIsShown_data();
    void switchIsShown();
    void enableSwitchFollows_data() { addKinds(); }
    void enableSwitchFollows();
    void applyingEmitsNothing_data() { addKinds(); }
    void applyingEmitsNothing();
    void equalStateTouchesNothing_data() { addKinds(); }
    void equalStateTouchesNothing();
    void whatIsShownDependsOnTheLastStateOnly_data() { addKinds(); }
    void whatIsShownDependsOnTheLastStateOnly();
};

void FormStateSuite::numberIsShown_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("button");
    QTest::addColumn<QByteArray>("state");
    QTest::addColumn<QString>("text");
    const auto row = [](const char* kind, const char* button, const char* state, const char* text) {
        QTest::addRow("%s %s", button, state) << QString::fromLatin1(kind) << QString::fromLatin1(button)
                                              << QByteArray(state) << QString::fromUtf8(text);
    };
    // Frequencies have no use for the field's decimals.
    row("am", "btnRate", R"({"Rate":2500})", "2.5kHz");
    row("am", "btnRate", R"({"Rate":1})", "1Hz");
    row("am", "btnRate", R"({"Rate":1234567.891})", "1.234567891MHz");
    row("am", "btnRate", R"({"Rate":"2500"})", "0Hz");
    row("am", "btnRate", R"({"Rate":null})", "0Hz");
    row("am", "btnRate", R"({})", "0Hz");
    // Plain numbers are rounded to the field's decimals.
    row("am", "btnDepth", R"({"Depth":33.5})", "33.5");
    row("am", "btnDepth", R"({"Depth":33.125})", "33.13");
    row("am", "btnDepth", R"({"Depth":33.1249})", "33.12");
    row("am", "btnDepth", R"({"Depth":-0.001})", "0");
    row("am", "btnDepth", R"({"Depth":100})", "100");
    row("am", "btnDepth", R"({"Depth":true})", "0");
    row("ofdm", "btnGuardInterval", R"({"GuardInterval":6.2555})", "6.256");
    row("dsss", "btnFilterAlpha", R"({"FilterAlpha":0.35})", "0.35");
    row("pm", "btnInitPhase", R"({"InitPhase":3.14159})", "180");
    row("pm", "btnInitPhase", R"({"InitPhase":-1.5707963267948966})", "-90");
    row("pm", "btnPhaseDeviation", R"({"PhaseDeviation":1})", "57.3");
    // Time spans keep the field's decimals of their unit.
    row("pulse", "btnWidth", R"({"Width":0.00025})", "250µs");
    row("pulse", "btnWidth", R"({"Width":1.2345678e-3})", "1.234568ms");
    row("pulse", "btnPeriod", R"({"Period":0})", "0s");
    row("awgn", "btnLength", R"({"Length":1e-12})", "1ps");
    // Integers are the nearest ones, halves away from zero.
    row("dsss", "btnCode", R"({"Code":2.5})", "3");
    row("dsss", "btnCode", R"({"Code":2.4999})", "2");
    row("dsss", "btnCode", R"({"Code":-2.5})", "-3");
    row("dsss", "btnCode", R"({"Code":-0.4})", "0");
    row("dsss", "btnSequenceSeed", R"({"SequenceSeed":4294967295})", "4294967295");
    row("dsss", "btnSequenceSeed", R"({"SequenceSeed":9007199254740991})", "9007199254740991");
    row("ofdm", "btnSymbolCount", R"({"SymbolCount":14.0})", "14");
}

void FormStateSuite::numberIsShown()
{
    QFETCH(const QString, kind);
    QFETCH(const QString, button);
    QFETCH(const QByteArray, state);
    QFETCH(const QString, text);
    const FormFixture fixture(kind);
    fixture.apply(state.constData());
    QCOMPARE(fixture.shown(button.toLatin1().constData()), text);
}

void FormStateSuite::choiceIsShown_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("button");
    QTest::addColumn<QByteArray>("state");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("item");
    for (const ExpectedForm& form : expectedForms()) {
        for (const ExpectedChoice& choice : form.choices) {
            const QJsonArray values = QJsonDocument::fromJson(choice.values).array();
            for (int item = 0; item < values.size(); ++item) {
                const QJsonObject state = {{QLatin1String(choice.key), values.at(item)}};
                const QByteArray text = QJsonDocument(state).toJson(QJsonDocument::Compact);
                QTest::addRow("%s %s", form.kind, text.constData())
                    << QString::fromLatin1(form.kind) << QString::fromLatin1(choice.button) << text
                    << choice.texts.at(item) << item;
            }
        }
    }
    const auto row = [](const char* name, const char* kind, const char* button, const char* state,
                        const char* text, int item = -1) {
        QTest::newRow(name) << QString::fromLatin1(kind) << QString::fromLatin1(button) << QByteArray(state)
                            << QString::fromLatin1(text) << item;
    };
    row("unknown word", "am", "btnShape", R"({"Shape":"Noise"})", "Noise");
    row("other case", "am", "btnShape", R"({"Shape":"sine"})", "sine");
    row("missing", "am", "btnShape", "{}", "");
    row("null", "am", "btnShape", R"({"Shape":null})", "");
    row("bool", "am", "btnShape", R"({"Shape":true})", "true");
    row("number for a word", "am", "btnShape", R"({"Shape":2})", "2");
    row("list", "am", "btnShape", R"({"Shape":["Sine"]})", "");
    row("item's text, not its value", "ofdm", "btnModulationType", R"({"ModulationType":"64QAM"})", "64QAM");
    row("unknown number", "dsss", "btnOversample", R"({"Oversample":5})", "5");
    row("broken number", "dsss", "btnOversample", R"({"Oversample":4.5})", "4.5");
    row("word for a number", "dsss", "btnOversample", R"({"Oversample":"4"})", "4");
    row("with a point", "dsss", "btnOversample", R"({"Oversample":8.0})", "8", 2);
    row("with an exponent", "ofdm", "btnFFTSize", R"({"FFTSize":1.024e3})", "1024", 6);
}

void FormStateSuite::choiceIsShown()
{
    QFETCH(const QString, kind);
    QFETCH(const QString, button);
    QFETCH(const QByteArray, state);
    QFETCH(const QString, text);
    QFETCH(const int, item);
    const FormFixture fixture(kind);
    fixture.apply(state.constData());
    const EnumTextButton* const choice = fixture.choice(button.toLatin1().constData());
    QCOMPARE(choice->labelText(), text);
    QCOMPARE(choice->currentEnum(), item);
}

void FormStateSuite::knownAfterUnknownChoice()
{
    const FormFixture fixture("ofdm");
    const EnumTextButton* const type = fixture.choice("btnModulationType");
    fixture.apply(R"({"ModulationType":"QAM64"})");
    QCOMPARE(type->currentEnum(), 5);
    fixture.apply(R"({"ModulationType":"64QAM"})"); // reads the same and is no item
    QCOMPARE(type->labelText(), QStringLiteral("64QAM"));
    QCOMPARE(type->currentEnum(), -1);
    fixture.apply(R"({"ModulationType":"QAM64"})");
    QCOMPARE(type->currentEnum(), 5);
}

void FormStateSuite::switchIsShown_data()
{
    QTest::addColumn<QByteArray>("state");
    QTest::addColumn<bool>("on");
    QTest::newRow("true") << QByteArray(R"({"NullDC":true})") << true;
    QTest::newRow("false") << QByteArray(R"({"NullDC":false})") << false;
    QTest::newRow("1") << QByteArray(R"({"NullDC":1})") << true;
    QTest::newRow("-1") << QByteArray(R"({"NullDC":-1})") << true;
    QTest::newRow("0") << QByteArray(R"({"NullDC":0})") << false;
    QTest::newRow("2.0") << QByteArray(R"({"NullDC":2.0})") << true;
    QTest::newRow("beyond 32 bits") << QByteArray(R"({"NullDC":4294967296})") << true;
    QTest::newRow("no whole one") << QByteArray(R"({"NullDC":0.5})") << false;
    QTest::newRow("word") << QByteArray(R"({"NullDC":"true"})") << false;
    QTest::newRow("null") << QByteArray(R"({"NullDC":null})") << false;
    QTest::newRow("missing") << QByteArray("{}") << false;
    QTest::newRow("another key") << QByteArray(R"({"Windowed":true})") << false;
}

void FormStateSuite::switchIsShown()
{
    QFETCH(const QByteArray, state);
    QFETCH(const bool, on);
    for (const char* before : {R"({"NullDC":true})", R"({"NullDC":false})"}) {
        const FormFixture fixture("ofdm");
        fixture.apply(before);
        fixture.apply(state.constData());
        QCOMPARE(fixture.onOff("btnNullDC")->status(), on);
        QCOMPARE(fixture.emitted(), 0);
    }
}

void FormStateSuite::enableSwitchFollows()
{
    QFETCH(const QString, kind);
    const FormFixture fixture(kind);
    QVERIFY(!fixture.editor->isModulationEnabled());
    for (bool enabled : {true, true, false, true, false, false}) {
        fixture.apply("{}", "{}", enabled);
        QCOMPARE(fixture.onOff("enabled")->status(), enabled);
        QCOMPARE(fixture.editor->isModulationEnabled(), enabled);
    }
    QCOMPARE(fixture.emitted(), 0);
}

// A state in which every control shows something else than another number gives.
static QJsonObject stateOf(const ExpectedForm& form, int variant)
{
    QJsonObject state = json(form.editableState);
    for (const ExpectedNumber& number : form.numbers)
        state.insert(QLatin1String(number.key), 1 + variant * 1.5);
    for (const ExpectedChoice& choice : form.choices) {
        const QJsonArray values = QJsonDocument::fromJson(choice.values).array();
        state.insert(QLatin1String(choice.key), variant > values.size() ? QJsonValue(QStringLiteral("odd"))
                                                                        : values.at(variant % values.size()));
    }
    for (const ExpectedSwitch& onOff : form.switches)
        state.insert(QLatin1String(onOff.key), variant % 2 == 1);
    return state;
}

void FormStateSuite::applyingEmitsNothing()
{
    QFETCH(const QString, kind);
    const FormFixture fixture(kind);
    QStringList last;
    for (int variant = 0; variant < 12; ++variant) {
        fixture.editor->applyEditorState(stateOf(expectedForm(kind), variant), {}, variant % 2 == 0);
        QVERIFY(fixture.everything() != last);
        last = fixture.everything();
        QCOMPARE(fixture.emitted() + fixture.requests->count(), 0);
    }
}

void FormStateSuite::equalStateTouchesNothing()
{
    QFETCH(const QString, kind);
    FormFixture fixture(kind);
    const QJsonObject state = stateOf(expectedForm(kind), 1);
    const QJsonObject profile = json(R"({"filterAlphaEditable":false,"oversampleOptions":[4,8]})");
    fixture.editor->applyEditorState(state, profile, true);
    QVERIFY(fixture.show());
    TouchCounter counter;
    const auto isQuiet = [&counter] {
        counter.touches = 0;
        QCoreApplication::processEvents();
        return counter.touches == 0;
    };
    QTRY_VERIFY(isQuiet());
    for (int i = 0; i < 3; ++i)
        fixture.editor->applyEditorState(state, profile, true);
    QCoreApplication::processEvents();
    QCOMPARE(counter.touches, 0);
    fixture.editor->applyEditorState(state, profile, false);
    QCoreApplication::processEvents();
    QVERIFY(counter.touches > 0); // the counter does count
}

void FormStateSuite::whatIsShownDependsOnTheLastStateOnly()
{
    QFETCH(const QString, kind);
    const ExpectedForm& form = expectedForm(kind);
    const QJsonObject profiles[] = {{},
                                    json(R"({"filterAlphaEditable":true,"oversampleOptions":[4,8]})"),
                                    json(R"({"filterAlphaEditable":false,"oversampleOptions":[]})")};
    constexpr int variants = 20;
    const auto apply = [&](const FormFixture& fixture, int variant) {
        const QJsonObject state = variant == 0 ? QJsonObject() : stateOf(form, variant);
        fixture.editor->applyEditorState(state, profiles[variant % 3], variant % 2 == 0);
    };
    QVector<QStringList> direct;
    for (int variant = 0; variant < variants; ++variant) {
        const FormFixture fixture(kind);
        apply(fixture, variant);
        direct.append(fixture.everything());
    }
    QRandomGenerator random(40000003U);
    const FormFixture walked(kind);
    for (int step = 0; step < 500; ++step) {
        const int variant = random.bounded(variants);
        apply(walked, variant);
        QCOMPARE(walked.everything(), direct.at(variant));
    }
    QCOMPARE(walked.emitted(), 0);
}

std::unique_ptr<QObject> makeFormStateSuite()
{
    return std::make_unique<FormStateSuite>();
}

#include "FormStateSuite.moc"
