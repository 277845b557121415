#include "formeditors/FormFixture.h"

// What single panels do beyond their tables.
class PanelRulesSuite final : public QObject
{
    Q_OBJECT

private slots:
    void pulseDutyIsShown_data();
    void pulseDutyIsShown();
    void pulseDutyIsDescribed();
    void pulseDutyIsEditedAsAWidth_data();
    void pulseDutyIsEditedAsAWidth();
    void pulseDutyIsMarked();
    void pmWorksInDegrees();
    void dsssFilterAlphaIsEditable_data();
    void dsssFilterAlphaIsEditable();
    void dsssOversampleOptions_data();
    void dsssOversampleOptions();
    void dsssModulationTypeOnlyShows();
    void ofdmDerivedValues_data();
    void ofdmDerivedValues();
    void ofdmDerivedValuesCannotBePressed();
};

void PanelRulesSuite::pulseDutyIsShown_data()
{
    QTest::addColumn<QByteArray>("state");
    QTest::addColumn<QString>("text");
    QTest::newRow("quarter") << QByteArray(R"({"Width":0.00025,"Period":0.001})") << QStringLiteral("25");
    QTest::newRow("third") << QByteArray(R"({"Width":1,"Period":3})") << QStringLiteral("33.33");
    QTest::newRow("period 0") << QByteArray(R"({"Width":1,"Period":0})") << QStringLiteral("0");
    QTest::newRow("negative period") << QByteArray(R"({"Width":1,"Period":-1})") << QStringLiteral("0");
    QTest::newRow("no period") << QByteArray(R"({"Width":1})") << QStringLiteral("0");
    QTest::newRow("no width") << QByteArray(R"({"Period":1})") << QStringLiteral("0");
    QTest::newRow("a key that is none") << QByteArray(R"({"DutyCycle":50})") << QStringLiteral("0");
    QTest::newRow("beyond numbers") << QByteArray(R"({"Width":1e300,"Period":1e-300})")
                                    << QStringLiteral("--");
}

void PanelRulesSuite::pulseDutyIsShown()
{
    QFETCH(const QByteArray, state);
    QFETCH(const QString, text);
    const FormFixture fixture("pulse");
    fixture.apply(state.constData());
    QCOMPARE(fixture.shown("btnDutyCycle"), text);
}

void PanelRulesSuite::pulseDutyIsDescribed()
{
    const FormFixture fixture("pulse");
    fixture.apply(R"({"Width":0.00025,"Period":0.001})");
    NumericFieldSpec spec;
    spec.unitType = QStringLiteral("x");
    QVERIFY(fixture.editor->describeNumericField(QStringLiteral("DutyCycle"), spec));
    QCOMPARE(spec.key, QStringLiteral("DutyCycle"));
    QCOMPARE(spec.title, QStringLiteral("Duty Cycle(%)"));
    QVERIFY(spec.unitType.isEmpty());
    QVERIFY(spec.hasStep && spec.step == 1);
    QCOMPARE(spec.decimals, 2);
    QVERIFY(spec.hasMinimum && spec.minimum == 0);
    QVERIFY(spec.hasMaximum && spec.maximum == 100);
    QVERIFY(!spec.integerOnly);
    QVERIFY(spec.value == 25);
    QVERIFY(fixture.editor->describeNumericField(QStringLiteral("Width"), spec));
}

void PanelRulesSuite::pulseDutyIsEditedAsAWidth_data()
{
    QTest::addColumn<QByteArray>("state");
    QTest::addColumn<double>("entered");
    QTest::addColumn<double>("width");
    QTest::newRow("half") << QByteArray(R"({"Width":0.00025,"Period":0.001})") << 50.0 << 0.0005;
    QTest::newRow("all of it") << QByteArray(R"({"Width":0.5,"Period":2})") << 100.0 << 2.0;
    QTest::newRow("none of it") << QByteArray(R"({"Width":0.5,"Period":2})") << 0.0 << 0.0;
    QTest::newRow("period 0") << QByteArray(R"({"Width":0.5,"Period":0})") << 50.0 << 0.0;
    QTest::newRow("no period") << QByteArray(R"({"Width":0.5})") << 50.0 << 0.0;
}

void PanelRulesSuite::pulseDutyIsEditedAsAWidth()
{
    QFETCH(const QByteArray, state);
    QFETCH(const double, entered);
    QFETCH(const double, width);
    const FormFixture fixture("pulse");
    fixture.apply(state.constData());
    fixture.editor->applyNumericValue(QStringLiteral("DutyCycle"), entered);
    QCOMPARE(fixture.setField().value(QLatin1String("key")).toString(), QStringLiteral("Width"));
    QVERIFY(fixture.setField().value(QLatin1String("value")).toDouble(-1) == width);
}

void PanelRulesSuite::pulseDutyIsMarked()
{
    const FormFixture fixture("pulse");
    const auto marked = [&fixture](const char* name) { return fixture.value(name)->isChecked(); };
    fixture.editor->setNumericFieldActive(QStringLiteral("DutyCycle"), true);
    QVERIFY(marked("btnDutyCycle") && !marked("btnWidth") && !marked("btnPeriod"));
    fixture.editor->setNumericFieldActive(QStringLiteral("Width"), true);
    QVERIFY(!marked("btnDutyCycle") && marked("btnWidth") && !marked("btnPeriod"));
    fixture.editor->setNumericFieldActive(QStringLiteral("DutyCycle"), true);
    fixture.editor->setNumericFieldActive(QStringLiteral("DutyCycle"), false);
    QVERIFY(!marked("btnDutyCycle") && !marked("btnWidth") && !marked("btnPeriod"));
}

void PanelRulesSuite::pmWorksInDegrees()
{
    const FormFixture fixture("pm");
    fixture.apply(R"({"InitPhase":3.14159})");
    QCOMPARE(fixture.shown("btnInitPhase"), QStringLiteral("180"));
    NumericFieldSpec spec;
    QVERIFY(fixture.editor->describeNumericField(QStringLiteral("InitPhase"), spec));
    QVERIFY(qAbs(spec.value - 180) < 0.001 && spec.minimum == -180 && spec.maximum == 180);
    fixture.editor->applyNumericValue(QStringLiteral("InitPhase"), 90);
    const double sent = fixture.setField().value(QLatin1String("value")).toDouble();
    QVERIFY(qAbs(sent - 1.5708) < 0.0001);
}

void PanelRulesSuite::dsssFilterAlphaIsEditable_data()
{
    QTest::addColumn<QByteArray>("state");
    QTest::addColumn<QByteArray>("profile");
    QTest::addColumn<bool>("editable");
    const auto row = [](const char* name, const char* state, const char* profile, bool editable) {
        QTest::newRow(name) << QByteArray(state) << QByteArray(profile) << editable;
    };
    row("raised cosine", R"({"FilterType":"RaisedCosine"})", "{}", true);
    row("root raised cosine", R"({"FilterType":"RootRaisedCosine"})", "{}", true);
    row("Gaussian", R"({"FilterType":"Gaussian"})", "{}", true);
    row("rectangular", R"({"FilterType":"Rectangular"})", "{}", false);
    row("half-sine", R"({"FilterType":"HalfSine"})", "{}", false);
    row("unknown filter", R"({"FilterType":"Gauss"})", "{}", false);
    row("no filter", "{}", "{}", false);
    row("rectangular, told so", R"({"FilterType":"Rectangular"})", R"({"filterAlphaEditable":true})", true);
    row("Gaussian, told not", R"({"FilterType":"Gaussian"})", R"({"filterAlphaEditable":false})", false);
    row("Gaussian, told a number", R"({"FilterType":"Gaussian"})", R"({"filterAlphaEditable":1})", false);
}

void PanelRulesSuite::dsssFilterAlphaIsEditable()
{
    QFETCH(const QByteArray, state);
    QFETCH(const QByteArray, profile);
    QFETCH(const bool, editable);
    FormFixture fixture("dsss");
    fixture.apply(state.constData(), profile.constData());
    QVERIFY(fixture.show());
    NumericFieldSpec spec;
    QCOMPARE(fixture.value("btnFilterAlpha")->isEnabled(), editable);
    QCOMPARE(fixture.editor->describeNumericField(QStringLiteral("FilterAlpha"), spec), editable);
    QTest::mouseClick(fixture.value("btnFilterAlpha"), Qt::LeftButton);
    QCOMPARE(fixture.requests->count(), editable ? 1 : 0);
    fixture.editor->applyNumericValue(QStringLiteral("FilterAlpha"), 0.5);
    QCOMPARE(fixture.emitted(), editable ? 1 : 0);
}

void PanelRulesSuite::dsssOversampleOptions_data()
{
    QTest::addColumn<QByteArray>("profile");
    QTest::addColumn<QVector<int>>("offered");
    QVector<int> all;
    for (int value = 4; value <= 32; value += 2)
        all.append(value);
    QTest::newRow("two") << QByteArray(R"({"oversampleOptions":[4,8]})") << QVector<int>{4, 8};
    QTest::newRow("missing") << QByteArray("{}") << all;
    QTest::newRow("empty") << QByteArray(R"({"oversampleOptions":[]})") << all;
    QTest::newRow("no list") << QByteArray(R"({"oversampleOptions":8})") << all;
    QTest::newRow("others too") << QByteArray(R"({"oversampleOptions":[2,32,5,"6",8.0]})")
                                << QVector<int>{8, 32};
    QTest::newRow("only others") << QByteArray(R"({"oversampleOptions":[2]})") << QVector<int>{};
}

void PanelRulesSuite::dsssOversampleOptions()
{
    QFETCH(const QByteArray, profile);
    QFETCH(const QVector<int>, offered);
    const FormFixture fixture("dsss");
    fixture.apply("{}", R"({"oversampleOptions":[6,10]})");
    fixture.apply(R"({"Oversample":4})", profile.constData());
    const EnumTextButton* const button = fixture.choice("btnOversample");
    QVector<int> found;
    for (int item = 0; item < button->enums().size(); ++item) {
        if (button->isItemEnabled(item))
            found.append(button->enums().at(item).toInt());
    }
    QCOMPARE(found, offered);
    QCOMPARE(button->labelText(), QStringLiteral("4")); // also when it is not offered
}

void PanelRulesSuite::dsssModulationTypeOnlyShows()
{
    const FormFixture fixture("dsss");
    for (const char* type : {"QPSK", "BPSK"}) {
        fixture.editor->applyEditorState({{QStringLiteral("ModulationType"), QLatin1String(type)}}, {}, true);
        QVERIFY(!fixture.choice("btnModulationType")->isEnabled());
        QCOMPARE(fixture.shown("btnModulationType"), QString::fromLatin1(type));
    }
}

void PanelRulesSuite::ofdmDerivedValues_data()
{
    QTest::addColumn<QByteArray>("state");
    QTest::addColumn<QString>("spacing");
    QTest::addColumn<QString>("guard");
    QTest::addColumn<QString>("window");
    const auto row = [](const char* name, const char* state, const char* spacing, const char* guard,
                        const char* window) {
        QTest::newRow(name) << QByteArray(state) << QString::fromLatin1(spacing) << QString::fromLatin1(guard)
                            << QString::fromLatin1(window);
    };
    row("usual", R"({"FFTSize":1024,"GuardInterval":25,"WindowLength":50,"SampleRate":30720000})", "30kHz",
        "256 samples", "128 samples");
    row("no size", R"({"GuardInterval":25,"WindowLength":50,"SampleRate":1e6})", "0Hz", "0 samples",
        "0 samples");
    row("size 0", R"({"FFTSize":0,"GuardInterval":25,"WindowLength":50,"SampleRate":1e6})", "0Hz",
        "0 samples", "0 samples");
    row("cut off", R"({"FFTSize":64,"GuardInterval":12.4,"WindowLength":99,"SampleRate":1000})", "15.625Hz",
        "7 samples", "7 samples");
    row("no guard interval", R"({"FFTSize":16,"WindowLength":50,"SampleRate":16})", "1Hz", "0 samples",
        "0 samples");
    row("no window", R"({"FFTSize":16,"GuardInterval":50})", "0Hz", "8 samples", "0 samples");
    row("nothing", "{}", "0Hz", "0 samples", "0 samples");
    row("negative", R"({"FFTSize":16,"GuardInterval":-1,"WindowLength":50,"SampleRate":16})", "1Hz",
        "0 samples", "0 samples");
    row("beyond 64 bits", R"({"FFTSize":1e20,"GuardInterval":100,"WindowLength":100})", "0Hz",
        "100000000000000000000 samples", "100000000000000000000 samples");
}

void PanelRulesSuite::ofdmDerivedValues()
{
    QFETCH(const QByteArray, state);
    QFETCH(const QString, spacing);
    QFETCH(const QString, guard);
    QFETCH(const QString, window);
    const FormFixture fixture("ofdm");
    fixture.apply(state.constData());
    QCOMPARE(fixture.shown("btnCarrierSpacing"), spacing);
    QCOMPARE(fixture.shown("btnGuardIntervalLength"), guard);
    QCOMPARE(fixture.shown("btnWindowLength"), window);
}

void PanelRulesSuite::ofdmDerivedValuesCannotBePressed()
{
    FormFixture fixture("ofdm");
    QVERIFY(fixture.show());
    for (const char* name : {"btnCarrierSpacing", "btnGuardIntervalLength", "btnWindowLength"}) {
        QVERIFY(fixture.value(name)->isEnabled()); // so that it can be read
        QVERIFY(fixture.value(name)->isReadOnly());
        QTest::mouseClick(fixture.value(name), Qt::LeftButton);
        QVERIFY(!fixture.value(name)->isChecked());
    }
    QCOMPARE(fixture.requests->count() + fixture.emitted(), 0);
}

std::unique_ptr<QObject> makePanelRulesSuite()
{
    return std::make_unique<PanelRulesSuite>();
}

#include "PanelRulesSuite.moc"
