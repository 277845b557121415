#include "business/UnitAdapters.h"
#include "controls/LabelButton.h"
#include "modeditors/QuickFixture.h"
#include "modeditors/QuickSuites.h"

#include <QJsonObject>
#include <QTest>

namespace {

constexpr double none = -1; // for a bound

struct ExpectedField
{
    const char* key;
    const char* button;
    const char* title;
    bool frequency;
    double step;
    int decimals;
    bool integer;
    double minimum;
    double maximum;
};

// With the state and profile below.
// clang-format off
constexpr ExpectedField expectedFields[] = {
    {"sampleRate", "btnSampleRate", "Sample Rate", true, 1000000, 3, false, 1, none},
    {"iQScale", "btnIQScale", "I/Q Scale(%)", false, 1, 2, false, 0.01, 100},
    {"period", "btnPeriod", "Period_Arb", false, 1, 0, true, 1, 26214400},
    {"samplesToUse", "btnSamplesToUse", "Samples To Use", false, 1, 0, true, 0, 900},
    {"sampleOffset", "btnSampleOffset", "Sample Offset", false, 1, 0, true, 0, 1000},
};
// clang-format on

constexpr char fullState[] =
    R"({"sampleRate":5, "iQScale":5, "period":2000, "samplesToUse":5, "sampleOffset":100})";
constexpr char fullProfile[] = R"({"loadedFilePath":"/w/a.wav", "samplesInFile":1000})";

} // namespace

Q_DECLARE_METATYPE(const ExpectedField*)

// The numeric fields as the keyboard sees them.
class QuickFieldsSuite final : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_fixture = std::make_unique<QuickFixture>(); }
    void cleanup() { m_fixture.reset(); }
    void isDescribed_data() { rows(); }
    void isDescribed();
    void isRefusedWithoutAFile_data() { rows(); }
    void isRefusedWithoutAFile();
    void clickAsksForTheKeyboard_data() { rows(); }
    void clickAsksForTheKeyboard();
    void valueIsCommitted_data() { rows(); }
    void valueIsCommitted();
    void isMarkedWhileActive_data() { rows(); }
    void isMarkedWhileActive();
    void samplesToUseAreBounded_data();
    void samplesToUseAreBounded();
    void scaleIsLocked_data();
    void scaleIsLocked();
    void scaleIsWholeWithoutAValue();
    void otherKeysAreRefused();

private:
    static void rows();
    [[nodiscard]] bool describe(const char* key)
    {
        return m_fixture->editor.editor().describeNumericField(QLatin1String(key), m_spec);
    }

    std::unique_ptr<QuickFixture> m_fixture;
    NumericFieldSpec m_spec;
};

void QuickFieldsSuite::rows()
{
    QTest::addColumn<const ExpectedField*>("field");
    for (const ExpectedField& field : expectedFields) {
        QTest::newRow(field.key) << &field;
    }
}

void QuickFieldsSuite::isDescribed()
{
    QFETCH(const ExpectedField*, field);
    const QJsonObject state = parsed(fullState);
    m_fixture->apply(parsed(fullProfile), state);
    QVERIFY(describe(field->key));
    QCOMPARE(m_spec.key, QLatin1String(field->key));
    QCOMPARE(m_spec.title, QLatin1String(field->title));
    QCOMPARE(m_spec.unitType, field->frequency ? Adapters::FrequencyUnitAdapter::adapterType() : QString());
    QCOMPARE(m_spec.unitText, QString());
    QCOMPARE(m_spec.auxText, QString());
    QCOMPARE(m_spec.value, state.value(QLatin1String(field->key)).toDouble());
    QVERIFY(m_spec.hasStep);
    QCOMPARE(m_spec.step, field->step);
    QCOMPARE(m_spec.decimals, field->decimals);
    QCOMPARE(m_spec.integerOnly, field->integer);
    QVERIFY(m_spec.hasMinimum);
    QCOMPARE(m_spec.minimum, field->minimum);
    QCOMPARE(m_spec.hasMaximum, field->maximum != none);
    QCOMPARE(m_spec.maximum, field->maximum != none ? field->maximum : 0);
}

void QuickFieldsSuite::isRefusedWithoutAFile()
{
    QFETCH(const ExpectedField*, field);
    m_fixture->apply({{QStringLiteral("samplesInFile"), 1000}}, parsed(fullState));
    QVERIFY(!describe(field->key));
    m_fixture->editor.editor().applyNumericValue(QLatin1String(field->key), 5);
    m_fixture->editor.click(QLatin1String(field->button));
    QCOMPARE(m_fixture->editor.emitted(), 0);
}

void QuickFieldsSuite::clickAsksForTheKeyboard()
{
    QFETCH(const ExpectedField*, field);
    m_fixture->apply(parsed(fullProfile), parsed(fullState));
    auto* const button = m_fixture->editor.find<LabelButton>(QLatin1String(field->button));
    m_fixture->editor.click(button->objectName());
    button->setFocus();
    QTest::keyClick(button, Qt::Key_Space);
    QCOMPARE(m_fixture->editor.numerics.count(), 2);
    QCOMPARE(m_fixture->editor.emitted(), 2);
    QCOMPARE(m_fixture->editor.numerics.first().at(0).toString(), QLatin1String(field->key));
    QCOMPARE(m_fixture->editor.numerics.first().at(1).value<QAbstractButton*>(), button);
    QVERIFY(!button->isChecked());
}

void QuickFieldsSuite::valueIsCommitted()
{
    QFETCH(const ExpectedField*, field);
    m_fixture->apply(parsed(fullProfile), parsed(fullState));
    const QStringList before = m_fixture->editor.shown();
    m_fixture->editor.editor().applyNumericValue(QLatin1String(field->key), 7.5);
    QCOMPARE(m_fixture->editor.emitted(), 1);
    QCOMPARE(m_fixture->editor.edit(0).action, QStringLiteral("set-field"));
    const QJsonObject expected = {{QStringLiteral("key"), QLatin1String(field->key)},
                                  {QStringLiteral("value"), field->integer ? 8 : 7.5}};
    QCOMPARE(m_fixture->editor.edit(0).arguments, expected);
    QCOMPARE(m_fixture->editor.shown(), before);
}

void QuickFieldsSuite::isMarkedWhileActive()
{
    QFETCH(const ExpectedField*, field);
    m_fixture->apply(parsed(fullProfile), parsed(fullState));
    const auto marked = [this] {
        QStringList names;
        for (const LabelButton* button : m_fixture->editor.editor().findChildren<LabelButton*>()) {
            if (button->isChecked()) {
                names.append(button->objectName());
            }
        }
        return names.join(QLatin1Char(' '));
    };
    m_fixture->editor.editor().setNumericFieldActive(QLatin1String(field->key), true);
    QCOMPARE(marked(), QLatin1String(field->button));
    m_fixture->editor.editor().setNumericFieldActive(QLatin1String(field->key), false);
    QCOMPARE(marked(), QString());
    QCOMPARE(m_fixture->editor.emitted(), 0);
}

void QuickFieldsSuite::samplesToUseAreBounded_data()
{
    QTest::addColumn<double>("period");
    QTest::addColumn<double>("offset");
    QTest::addColumn<double>("inFile");
    QTest::addColumn<double>("maximum");
    QTest::newRow("period") << 500.0 << 100.0 << 1000.0 << 500.0;
    QTest::newRow("rest of the file") << 5000.0 << 100.0 << 1000.0 << 900.0;
    QTest::newRow("equal") << 900.0 << 100.0 << 1000.0 << 900.0;
    QTest::newRow("offset at the end") << 500.0 << 1000.0 << 1000.0 << 0.0;
    QTest::newRow("offset beyond the end") << 500.0 << 1001.0 << 1000.0 << 0.0;
    QTest::newRow("nothing known") << 0.0 << 0.0 << 0.0 << 0.0;
}

void QuickFieldsSuite::samplesToUseAreBounded()
{
    QFETCH(const double, period);
    QFETCH(const double, offset);
    QFETCH(const double, inFile);
    QFETCH(const double, maximum);
    m_fixture->apply({{QStringLiteral("loadedFilePath"), QStringLiteral("/w/a.wav")},
                      {QStringLiteral("samplesInFile"), inFile}},
                     {{QStringLiteral("period"), period}, {QStringLiteral("sampleOffset"), offset}});
    QVERIFY(describe("samplesToUse"));
    QVERIFY(m_spec.hasMaximum);
    QCOMPARE(m_spec.maximum, maximum);
    QVERIFY(describe("sampleOffset"));
    QVERIFY(m_spec.hasMaximum);
    QCOMPARE(m_spec.maximum, inFile);
}

void QuickFieldsSuite::scaleIsLocked_data()
{
    QTest::addColumn<bool>("autoScale");
    QTest::addColumn<bool>("recording");
    QTest::newRow("free") << false << false;
    QTest::newRow("auto scale") << true << false;
    QTest::newRow("I/Q recording") << false << true;
    QTest::newRow("both") << true << true;
}

void QuickFieldsSuite::scaleIsLocked()
{
    QFETCH(const bool, autoScale);
    QFETCH(const bool, recording);
    QJsonObject profile = parsed(fullProfile);
    profile.insert(QStringLiteral("iqsWavLoaded"), recording);
    m_fixture->apply(profile, {{QStringLiteral("autoScale"), autoScale}});
    const bool free = !autoScale && !recording;
    QCOMPARE(describe("iQScale"), free);
    m_fixture->editor.editor().applyNumericValue(QStringLiteral("iQScale"), 50);
    QCOMPARE(m_fixture->editor.emitted(), int(free));
}

void QuickFieldsSuite::scaleIsWholeWithoutAValue()
{
    m_fixture->apply(parsed(fullProfile));
    QVERIFY(describe("iQScale"));
    QCOMPARE(m_spec.value, 100.0);
}

void QuickFieldsSuite::otherKeysAreRefused()
{
    m_fixture->apply(parsed(fullProfile), parsed(fullState));
    for (const char* key : {"", "Other", "autoScale", "periodLength", "SampleRate", "enabled"}) {
        QVERIFY2(!describe(key), key);
        m_fixture->editor.editor().applyNumericValue(QLatin1String(key), 1);
    }
    m_fixture->editor.click(QStringLiteral("btnPeriodLen"));
    QCOMPARE(m_fixture->editor.emitted(), 0);
}

std::unique_ptr<QObject> makeQuickFieldsSuite()
{
    return std::make_unique<QuickFieldsSuite>();
}

#include "QuickFieldsSuite.moc"
