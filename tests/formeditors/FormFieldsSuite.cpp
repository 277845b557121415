#include "formeditors/FormFixture.h"

namespace {

const QString dutyCycle = QStringLiteral("DutyCycle");

// The keys that the form's own numbers have; the duty cycle is none of the state's.
QStringList expectedKeys(const ExpectedForm& form)
{
    QStringList keys;
    for (const ExpectedNumber& number : form.numbers)
        keys.append(QLatin1String(number.key));
    if (QLatin1String(form.kind) == QLatin1String("pulse"))
        keys.append(dutyCycle);
    keys.sort();
    return keys;
}

} // namespace

// A walk over the fields of every form.
class FormFieldsSuite final : public QObject
{
    Q_OBJECT

private slots:
    void everyValueButtonOpensOneField_data() { addKinds(); }
    void everyValueButtonOpensOneField();
    void fieldsAreDescribed_data() { addKinds(); }
    void fieldsAreDescribed();
    void valuesAreDescribedAsShown_data() { addKinds(); }
    void valuesAreDescribedAsShown();
    void disabledFieldIsRefused_data() { addKinds(); }
    void disabledFieldIsRefused();
    void unknownFieldIsRefused_data() { addKinds(); }
    void unknownFieldIsRefused();
    void valuesAreCommitted_data() { addKinds(); }
    void valuesAreCommitted();
    void committedNumbersAreExact_data();
    void committedNumbersAreExact();
    void integersAreRounded_data();
    void integersAreRounded();
    void whatIsNoNumberIsNotCommitted();
    void oneFieldIsMarked_data() { addKinds(); }
    void oneFieldIsMarked();
};

void FormFieldsSuite::everyValueButtonOpensOneField()
{
    QFETCH(const QString, kind);
    FormFixture fixture(kind);
    fixture.apply(expectedForm(kind).editableState, R"({"filterAlphaEditable":true})");
    QVERIFY(fixture.show());
    QStringList keys;
    const auto buttons = fixture.editor->findChildren<LabelButton*>();
    for (LabelButton* button : buttons) {
        if (qobject_cast<EnumTextButton*>(button) || button->isReadOnly() || button->isHidden())
            continue;
        for (bool marked : {false, true}) { // also while its keyboard is open
            fixture.forget();
            button->setChecked(marked);
            QTest::mouseClick(button, Qt::LeftButton);
            QCOMPARE(fixture.requests->count(), 1);
            QCOMPARE(fixture.requests->first().at(1).value<QAbstractButton*>(), button);
            QCOMPARE(button->isChecked(), marked);
            QCOMPARE(fixture.emitted(), 0);
        }
        button->setChecked(false);
        keys.append(fixture.requests->first().first().toString());
    }
    keys.sort();
    QCOMPARE(keys, expectedKeys(expectedForm(kind)));
    for (const ExpectedNumber& number : expectedForm(kind).numbers) {
        fixture.forget();
        QTest::mouseClick(fixture.value(number.button), Qt::LeftButton);
        QCOMPARE(fixture.requests->first().first().toString(), QString::fromLatin1(number.key));
    }
}

void FormFieldsSuite::fieldsAreDescribed()
{
    QFETCH(const QString, kind);
    const FormFixture fixture(kind);
    fixture.apply(expectedForm(kind).editableState, R"({"filterAlphaEditable":true})");
    for (const ExpectedNumber& expected : expectedForm(kind).numbers) {
        NumericFieldSpec spec;
        spec.setMaximum(-1); // whatever was there before
        spec.unitText = QStringLiteral("x");
        QVERIFY2(fixture.editor->describeNumericField(QLatin1String(expected.key), spec), expected.key);
        QCOMPARE(spec.key, QString::fromLatin1(expected.key));
        QCOMPARE(spec.title, QString::fromLatin1(expected.title));
        QCOMPARE(spec.unitType, QString::fromLatin1(expected.unitType));
        QVERIFY(spec.unitText.isEmpty());
        QCOMPARE(spec.auxText, QString::fromLatin1(expected.auxText));
        QVERIFY(spec.hasStep && spec.step == expected.step);
        QCOMPARE(spec.decimals, expected.decimals);
        QCOMPARE(spec.integerOnly, expected.integerOnly);
        QCOMPARE(spec.hasMinimum, expected.minimum.has_value());
        QVERIFY(spec.minimum == expected.minimum.value_or(0));
        QCOMPARE(spec.hasMaximum, expected.maximum.has_value());
        QVERIFY(spec.maximum == expected.maximum.value_or(0));
        QVERIFY(spec.value == 0);
    }
}

void FormFieldsSuite::valuesAreDescribedAsShown()
{
    QFETCH(const QString, kind);
    const FormFixture fixture(kind);
    QJsonObject state = json(expectedForm(kind).editableState);
    double next = 1.25;
    for (const ExpectedNumber& expected : expectedForm(kind).numbers)
        state.insert(QLatin1String(expected.key), next += 1);
    fixture.editor->applyEditorState(state, json(R"({"filterAlphaEditable":true})"), false);
    for (const ExpectedNumber& expected : expectedForm(kind).numbers) {
        NumericFieldSpec spec;
        QVERIFY(fixture.editor->describeNumericField(QLatin1String(expected.key), spec));
        QVERIFY2(spec.value == state.value(QLatin1String(expected.key)).toDouble() * expected.scale,
                 expected.key);
    }
}

void FormFieldsSuite::disabledFieldIsRefused()
{
    QFETCH(const QString, kind);
    const FormFixture fixture(kind);
    fixture.apply(expectedForm(kind).editableState, R"({"filterAlphaEditable":true})");
    for (const ExpectedNumber& expected : expectedForm(kind).numbers) {
        const QString key = QLatin1String(expected.key);
        NumericFieldSpec spec;
        fixture.value(expected.button)->setEnabled(false);
        QVERIFY2(!fixture.editor->describeNumericField(key, spec), expected.key);
        fixture.editor->applyNumericValue(key, 1);
        QCOMPARE(fixture.emitted(), 0);
        fixture.value(expected.button)->setEnabled(true);
        QVERIFY2(fixture.editor->describeNumericField(key, spec), expected.key);
    }
}

void FormFieldsSuite::unknownFieldIsRefused()
{
    QFETCH(const QString, kind);
    const FormFixture fixture(kind);
    NumericFieldSpec spec;
    for (const char* key : {"", "rate", "Nothing", "Shape", "FFTSize", "NullDC", "enabled"}) {
        QVERIFY(!fixture.editor->describeNumericField(QLatin1String(key), spec));
        fixture.editor->applyNumericValue(QLatin1String(key), 1);
        QCOMPARE(fixture.emitted(), 0);
    }
}

void FormFieldsSuite::valuesAreCommitted()
{
    QFETCH(const QString, kind);
    const FormFixture fixture(kind);
    fixture.apply(expectedForm(kind).editableState, R"({"filterAlphaEditable":true})");
    for (const ExpectedNumber& expected : expectedForm(kind).numbers) {
        fixture.forget();
        const QString before = fixture.shown(expected.button);
        fixture.editor->applyNumericValue(QLatin1String(expected.key), 7);
        const QJsonObject edit = fixture.setField();
        QCOMPARE(edit.keys(), (QStringList{QStringLiteral("key"), QStringLiteral("value")}));
        QCOMPARE(edit.value(QLatin1String("key")).toString(), QString::fromLatin1(expected.key));
        QVERIFY(edit.value(QLatin1String("value")).toDouble(-1) == 7 / expected.scale);
        QCOMPARE(fixture.shown(expected.button), before); // until it is confirmed
    }
}

void FormFieldsSuite::committedNumbersAreExact_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("key");
    QTest::addColumn<double>("entered");
    QTest::addColumn<double>("sent");
    const double values[] = {0.1, 1.23456789012345, 123456789.012345, 999999999999999, 1e-12, 2.5e9};
    for (double value : values) {
        const QByteArray text = QByteArray::number(value, 'g', 15);
        QTest::addRow("frequency %s", text.constData())
            << QStringLiteral("fm") << QStringLiteral("Deviation") << value << value;
        QTest::addRow("time %s", text.constData())
            << QStringLiteral("awgn") << QStringLiteral("Length") << value << value;
        QTest::addRow("number %s", text.constData())
            << QStringLiteral("ofdm") << QStringLiteral("GuardInterval") << value << value;
        QTest::addRow("degrees %s", text.constData())
            << QStringLiteral("pm") << QStringLiteral("InitPhase") << value << value / 57.29577951308232;
    }
}

void FormFieldsSuite::committedNumbersAreExact()
{
    QFETCH(const QString, kind);
    QFETCH(const QString, key);
    QFETCH(const double, entered);
    QFETCH(const double, sent);
    const FormFixture fixture(kind);
    fixture.editor->applyNumericValue(key, entered);
    QVERIFY(fixture.setField().value(QLatin1String("value")).toDouble() == sent);
}

void FormFieldsSuite::integersAreRounded_data()
{
    QTest::addColumn<double>("entered");
    QTest::addColumn<double>("sent");
    QTest::newRow("whole") << 7.0 << 7.0;
    QTest::newRow("half") << 7.5 << 8.0;
    QTest::newRow("below a half") << 7.4999 << 7.0;
    QTest::newRow("even half") << 2.5 << 3.0;
    QTest::newRow("negative half") << -2.5 << -3.0;
    QTest::newRow("above a negative half") << -2.4999 << -2.0;
    QTest::newRow("the number below a half") << 0.49999999999999994 << 0.0;
    QTest::newRow("large") << 4294967295.0 << 4294967295.0;
    QTest::newRow("beyond 64 bits") << 1e20 << 1e20;
}

void FormFieldsSuite::integersAreRounded()
{
    QFETCH(const double, entered);
    QFETCH(const double, sent);
    for (const char* key : {"Code", "FilterLength", "SequenceSeed"}) {
        const FormFixture fixture("dsss");
        fixture.editor->applyNumericValue(QLatin1String(key), entered);
        QVERIFY(fixture.setField().value(QLatin1String("value")).toDouble(-1) == sent);
    }
}

void FormFieldsSuite::whatIsNoNumberIsNotCommitted()
{
    const FormFixture fixture("pulse");
    fixture.apply(R"({"Period":1})");
    for (const char* key : {"Width", "DutyCycle"}) {
        for (double value : {qQNaN(), qInf(), -qInf()}) {
            fixture.editor->applyNumericValue(QLatin1String(key), value);
            QCOMPARE(fixture.emitted(), 0);
        }
    }
}

void FormFieldsSuite::oneFieldIsMarked()
{
    QFETCH(const QString, kind);
    const FormFixture fixture(kind);
    const auto marked = [&fixture] {
        QStringList names;
        const auto buttons =
            fixture.editor->findChildren<QAbstractButton*>(QString(), Qt::FindDirectChildrenOnly);
        for (const QAbstractButton* button : buttons) {
            if (button->isChecked())
                names.append(button->objectName());
        }
        return names;
    };
    for (const ExpectedNumber& expected : expectedForm(kind).numbers) {
        fixture.editor->setNumericFieldActive(QLatin1String(expected.key), true);
        QCOMPARE(marked(), QStringList{QLatin1String(expected.button)});
    }
    fixture.editor->setNumericFieldActive(QStringLiteral("Nothing"), true);
    QCOMPARE(marked(), QStringList());
    const char* const key = expectedForm(kind).numbers.first().key;
    fixture.editor->setNumericFieldActive(QLatin1String(key), true);
    fixture.editor->setNumericFieldActive(QLatin1String(key), false);
    QCOMPARE(marked(), QStringList());
    QCOMPARE(fixture.emitted() + fixture.requests->count(), 0);
}

std::unique_ptr<QObject> makeFormFieldsSuite()
{
    return std::make_unique<FormFieldsSuite>();
}

#include "FormFieldsSuite.moc"
