#include "business/UnitAdapters.h"
#include "controls/LabelButton.h"
#include "modeditors/EditorFixture.h"
#include "modeditors/EditorSuites.h"

#include <QJsonObject>
#include <QJsonValue>
#include <QTest>
#include <QVector>
#include <cmath>
#include <limits>

namespace {

constexpr double none = -1; // for a bound

struct ExpectedField
{
    const char* kind;
    const char* key;
    const char* button;
    const char* title;
    bool frequency;
    double step;
    int decimals;
    bool integer;
    double minimum;
    double maximum;
    const char* maximumKey;
    const char* conditionKey;
    bool conditionValue;
};

// clang-format off
constexpr ExpectedField expectedFields[] = {
    {"digital", "SymbolRate", "symbolRate", "Symbol Rate", true, 1000000, 3, false, 1, none, "", "", true},
    {"digital", "FilterAlpha", "filterAlpha", "Filter Alpha", false, 0.1, 2, false, 0, 1, "", "filterAlphaEditable", true},
    {"digital", "PN", "pn", "PN", false, 1, 0, true, 4, 24, "", "", true},
    {"digital", "FilterLength", "filterLength", "Filter Length (symbols)", false, 2, 0, true, 1, none, "", "", true},
    {"digital", "SequenceSeed", "sequenceSeed", "Sequence Seed", false, 1, 0, true, 0, none, "", "", true},
    {"digital", "FSKDeviation", "fskDeviation", "FSK Deviation", true, 1000, 3, false, 0, none, "", "fskDeviationEditable", true},
    {"multitone", "Seed", "btnSeed", "Phase Random Seed", false, 1, 0, true, 0, none, "", "randomMode", true},
    {"multitone", "Count", "btnCount", "Tone Count", false, 1, 0, true, 1, none, "countMaximum", "", true},
    {"multitone", "FreqSpacing", "btnFreqSpacing", "Freq Spacing", true, 1000000, 3, false, 1, none, "freqSpacingMaximum", "", true},
    {"multitone", "NotchWidth", "btnNotchWidth", "Notch Width", true, 1000, 3, false, 0, none, "", "discreteKeepToneMode", false},
};
// clang-format on

constexpr int stored = 5; // a value within all bounds

// A profile in which the field can be edited, or not.
QJsonObject profileFor(const ExpectedField& field, bool editable = true)
{
    QJsonObject profile;
    if (*field.conditionKey) {
        profile.insert(QLatin1String(field.conditionKey), editable == field.conditionValue);
    }
    return profile;
}

} // namespace

Q_DECLARE_METATYPE(const ExpectedField*)

// The numeric fields of all purpose-built editors against a table of their own.
class NumericFieldsSuite final : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { m_fixture.reset(); }
    void isDescribed_data() { rows(); }
    void isDescribed();
    void valueIsTheStates_data() { rows(); }
    void valueIsTheStates();
    void profileGivesTheMaximum_data() { rows(); }
    void profileGivesTheMaximum();
    void conditionIsKept_data() { rows(); }
    void conditionIsKept();
    void clickAsksForTheKeyboard_data() { rows(); }
    void clickAsksForTheKeyboard();
    void valueIsCommitted_data() { rows(); }
    void valueIsCommitted();
    void onlyTheActiveFieldIsMarked_data() { rows(); }
    void onlyTheActiveFieldIsMarked();
    void tableIsComplete_data();
    void tableIsComplete();
    void otherKeysAreRefused_data();
    void otherKeysAreRefused();

private:
    static void rows();
    void open(const ExpectedField& field, const QJsonObject& profile);

    std::unique_ptr<EditorFixture> m_fixture;
};

void NumericFieldsSuite::rows()
{
    QTest::addColumn<const ExpectedField*>("field");
    for (const ExpectedField& field : expectedFields) {
        QTest::addRow("%s %s", field.kind, field.key) << &field;
    }
}

void NumericFieldsSuite::open(const ExpectedField& field, const QJsonObject& profile)
{
    m_fixture = std::make_unique<EditorFixture>(QLatin1String(field.kind));
    m_fixture->apply({{QLatin1String(field.key), stored}}, profile);
}

void NumericFieldsSuite::isDescribed()
{
    QFETCH(const ExpectedField*, field);
    open(*field, profileFor(*field));
    NumericFieldSpec spec;
    QVERIFY(m_fixture->editor().describeNumericField(QLatin1String(field->key), spec));
    QCOMPARE(spec.key, QLatin1String(field->key));
    QCOMPARE(spec.title, QLatin1String(field->title));
    QCOMPARE(spec.unitType, field->frequency ? Adapters::FrequencyUnitAdapter::adapterType() : QString());
    QCOMPARE(spec.unitText, QString());
    QCOMPARE(spec.auxText, QString());
    QCOMPARE(spec.value, double(stored));
    QVERIFY(spec.hasStep);
    QCOMPARE(spec.step, field->step);
    QCOMPARE(spec.decimals, field->decimals);
    QCOMPARE(spec.integerOnly, field->integer);
    QVERIFY(spec.hasMinimum);
    QCOMPARE(spec.minimum, field->minimum);
    QCOMPARE(spec.hasMaximum, field->maximum != none);
    QCOMPARE(spec.maximum, field->maximum != none ? field->maximum : 0);
}

// The button rounds, the keyboard starts from what there is.
void NumericFieldsSuite::valueIsTheStates()
{
    QFETCH(const ExpectedField*, field);
    m_fixture = std::make_unique<EditorFixture>(QLatin1String(field->kind));
    m_fixture->apply({{QLatin1String(field->key), 2.5}}, profileFor(*field));
    NumericFieldSpec spec;
    QVERIFY(m_fixture->editor().describeNumericField(QLatin1String(field->key), spec));
    const bool isInteger = QByteArrayList{"PN", "FilterLength", "Count"}.contains(field->key);
    QCOMPARE(spec.value, isInteger ? 0 : 2.5);
}

void NumericFieldsSuite::profileGivesTheMaximum()
{
    QFETCH(const ExpectedField*, field);
    const QVector<QJsonValue> withoutMaximum = {0, -1, QStringLiteral("10"), QJsonValue()};
    for (const QJsonValue& value : withoutMaximum) {
        QJsonObject profile = profileFor(*field);
        profile.insert(QLatin1String(field->maximumKey), value);
        open(*field, profile);
        NumericFieldSpec spec;
        QVERIFY(m_fixture->editor().describeNumericField(QLatin1String(field->key), spec));
        QCOMPARE(spec.hasMaximum, field->maximum != none);
    }
    QJsonObject profile = profileFor(*field);
    profile.insert(QLatin1String("countMaximum"), 4096);
    profile.insert(QLatin1String("freqSpacingMaximum"), 2.5e6);
    open(*field, profile);
    NumericFieldSpec spec;
    QVERIFY(m_fixture->editor().describeNumericField(QLatin1String(field->key), spec));
    const QLatin1String key(field->maximumKey);
    QCOMPARE(spec.hasMaximum, key != QLatin1String() || field->maximum != none);
    QCOMPARE(spec.maximum, key == QLatin1String("countMaximum")         ? 4096
                           : key == QLatin1String("freqSpacingMaximum") ? 2.5e6
                           : field->maximum != none                     ? field->maximum
                                                                        : 0);
}

void NumericFieldsSuite::conditionIsKept()
{
    QFETCH(const ExpectedField*, field);
    const QString key = QLatin1String(field->key);
    NumericFieldSpec spec;
    if (*field->conditionKey) {
        open(*field, profileFor(*field, false));
        QVERIFY(!m_fixture->editor().describeNumericField(key, spec));
        m_fixture->editor().applyNumericValue(key, stored);
        QCOMPARE(m_fixture->emitted(), 0);
    }
    // A flag that is not there is false.
    open(*field, {});
    const bool editable = !*field->conditionKey || !field->conditionValue;
    QCOMPARE(m_fixture->editor().describeNumericField(key, spec), editable);
}

void NumericFieldsSuite::clickAsksForTheKeyboard()
{
    QFETCH(const ExpectedField*, field);
    open(*field, profileFor(*field));
    auto* const button = m_fixture->find<LabelButton>(QLatin1String(field->button));
    QVERIFY(button && button->isVisible() && button->isEnabled());
    QVERIFY(!button->labelText().isEmpty());
    for (const bool marked : {false, true}) {
        button->setChecked(marked);
        m_fixture->click(button->objectName());
        QCOMPARE(button->isChecked(), marked);
    }
    QCOMPARE(m_fixture->numerics.count(), 2);
    QCOMPARE(m_fixture->emitted(), 2);
    QCOMPARE(m_fixture->numerics.first().at(0).toString(), QLatin1String(field->key));
    QCOMPARE(m_fixture->numerics.first().at(1).value<QAbstractButton*>(), button);
    button->setFocus();
    QTest::keyClick(button, Qt::Key_Space);
    QCOMPARE(m_fixture->numerics.count(), 3);
}

void NumericFieldsSuite::valueIsCommitted()
{
    QFETCH(const ExpectedField*, field);
    const QString key = QLatin1String(field->key);
    open(*field, profileFor(*field));
    const QStringList before = m_fixture->shown();
    m_fixture->editor().applyNumericValue(key, 7.5);
    QCOMPARE(m_fixture->emitted(), 1);
    QCOMPARE(m_fixture->edit(0).action, QStringLiteral("set-field"));
    const QJsonObject expected = {{QStringLiteral("key"), key},
                                  {QStringLiteral("value"), field->integer ? 8 : 7.5}};
    QCOMPARE(m_fixture->edit(0).arguments, expected);
    QVERIFY(m_fixture->edit(0).arguments.value(QStringLiteral("value")).isDouble());
    QCOMPARE(m_fixture->shown(), before);
    for (const double value : {std::nan(""), std::numeric_limits<double>::infinity()}) {
        m_fixture->editor().applyNumericValue(key, value);
    }
    QCOMPARE(m_fixture->emitted(), 1);
}

void NumericFieldsSuite::onlyTheActiveFieldIsMarked()
{
    QFETCH(const ExpectedField*, field);
    open(*field, profileFor(*field));
    const auto marked = [this] {
        QStringList names;
        const auto buttons = m_fixture->editor().findChildren<LabelButton*>();
        for (const LabelButton* button : buttons) {
            if (button->isChecked()) {
                names.append(button->objectName());
            }
        }
        return names;
    };
    const auto buttons = m_fixture->editor().findChildren<LabelButton*>();
    for (LabelButton* button : buttons) {
        button->setChecked(button->metaObject() == &LabelButton::staticMetaObject);
    }
    m_fixture->editor().setNumericFieldActive(QLatin1String(field->key), true);
    QCOMPARE(marked(), QStringList(QLatin1String(field->button)));
    // A state that arrives while the keyboard is open leaves the mark.
    m_fixture->apply({}, profileFor(*field), true);
    QCOMPARE(marked(), QStringList(QLatin1String(field->button)));
    m_fixture->editor().setNumericFieldActive(QLatin1String(field->key), false);
    QCOMPARE(marked(), QStringList());
    m_fixture->editor().setNumericFieldActive(QStringLiteral("Other"), true);
    QCOMPARE(marked(), QStringList());
    QCOMPARE(m_fixture->emitted(), 0);
}

void NumericFieldsSuite::tableIsComplete_data()
{
    QTest::addColumn<QString>("kind");
    QTest::newRow("digital") << QStringLiteral("digital");
    QTest::newRow("multitone") << QStringLiteral("multitone");
}

// Every value button of the form is the button of a field.
void NumericFieldsSuite::tableIsComplete()
{
    QFETCH(const QString, kind);
    const EditorFixture fixture(kind);
    QStringList expected;
    for (const ExpectedField& field : expectedFields) {
        if (kind == QLatin1String(field.kind)) {
            expected.append(QLatin1String(field.button));
        }
    }
    QStringList found;
    const auto buttons = fixture.editor().findChildren<LabelButton*>();
    for (const LabelButton* button : buttons) {
        if (button->metaObject() == &LabelButton::staticMetaObject) {
            found.append(button->objectName());
        }
    }
    expected.sort();
    found.sort();
    QCOMPARE(found, expected);
}

void NumericFieldsSuite::otherKeysAreRefused_data()
{
    tableIsComplete_data();
}

void NumericFieldsSuite::otherKeysAreRefused()
{
    QFETCH(const QString, kind);
    m_fixture = std::make_unique<EditorFixture>(kind);
    for (const char* key : {"", "Other", "pn", "ModulationType", "Oversample", "PhaseMode", "enabled"}) {
        NumericFieldSpec spec;
        QVERIFY2(!m_fixture->editor().describeNumericField(QLatin1String(key), spec), key);
        m_fixture->editor().applyNumericValue(QLatin1String(key), 1);
    }
    QCOMPARE(m_fixture->emitted(), 0);
}

std::unique_ptr<QObject> makeNumericFieldsSuite()
{
    return std::make_unique<NumericFieldsSuite>();
}

#include "NumericFieldsSuite.moc"
