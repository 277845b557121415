#include "controls/ElidedLabel.h"
#include "formeditors/FormFixture.h"
#include "formeditors/SampleCounts.h"

#include <algorithm>
#include <limits>

// The editor that plays one file.
class ArbPanelSuite final : public QObject
{
    Q_OBJECT

private slots:
    void withoutAFileNothingCanBeEdited();
    void fileNameIsShown();
    void longPathIsShortenedInTheMiddle();
    void autoScale_data();
    void autoScale();
    void autoScaleComesBackAsItWas();
    void lockedAutoScaleIsNotTouched();
    void fieldsAreEditable_data();
    void fieldsAreEditable();
    void lengths_data();
    void lengths();
    void wholeCounts_data();
    void wholeCounts();
    void informationCannotBePressed();
};

void ArbPanelSuite::withoutAFileNothingCanBeEdited()
{
    for (const char* state :
         {"{}", R"({"FileName":"","AutoScale":true,"SampleRate":1e6})", R"({"FileName":7,"SampleRate":0})"}) {
        const FormFixture fixture("playback");
        fixture.apply(R"({"FileName":"/a.wav"})");
        fixture.apply(state);
        QCOMPARE(fixture.shown("btnFileName"), QStringLiteral("N/A"));
        QVERIFY(fixture.value("btnFileName")->toolTip().isEmpty());
        for (const char* name :
             {"btnSampleRate", "btnIQScale", "btnSampleOffset", "btnSamplesToUse", "btnPeriod"})
            QVERIFY2(!fixture.value(name)->isEnabled(), name);
        QVERIFY(!fixture.onOff("btnAutoScale")->isEnabled());
        QVERIFY(fixture.onOff("enabled")->isEnabled());
        QVERIFY(fixture.find<QAbstractButton>("btnLoad")->isEnabled());
        QCOMPARE(fixture.shown("btnSignalLen"), QStringLiteral("0s"));
        QCOMPARE(fixture.shown("btnPeriodLen"), QStringLiteral("0s"));
        NumericFieldSpec spec;
        QVERIFY(!fixture.editor->describeNumericField(QStringLiteral("IQScale"), spec));
    }
}

void ArbPanelSuite::fileNameIsShown()
{
    const FormFixture fixture("playback");
    for (const char* path : {"/data/tone.wav", "/data/%1 <b>&amp; more.wav", "tone.wav"}) {
        fixture.editor->applyEditorState({{QStringLiteral("FileName"), QLatin1String(path)}}, {}, false);
        QCOMPARE(fixture.shown("btnFileName"), QString::fromLatin1(path));
        QCOMPARE(fixture.value("btnFileName")->toolTip(), QString::fromLatin1(path));
    }
}

void ArbPanelSuite::longPathIsShortenedInTheMiddle()
{
    FormFixture fixture("playback");
    const QString path =
        QStringLiteral("/data/") + QString(300, QLatin1Char('x')) + QStringLiteral("/tone.wav");
    fixture.editor->applyEditorState({{QStringLiteral("FileName"), path}}, {}, false);
    QVERIFY(fixture.show());
    fixture.editor->resize(560, fixture.editor->height());
    QCoreApplication::processEvents();
    const auto labels = fixture.value("btnFileName")->findChildren<Controls::ElidedLabel*>();
    bool cut = false;
    for (const Controls::ElidedLabel* label : labels) {
        if (label->isCut()) {
            cut = true;
            QVERIFY(label->shownLines().first().startsWith(QLatin1String("/data/")));
            QVERIFY(label->shownLines().first().endsWith(QLatin1String("/tone.wav")));
        }
    }
    QVERIFY(cut);
    QCOMPARE(fixture.value("btnFileName")->toolTip(), path);
    fixture.editor->applyEditorState({}, {}, false);
    QCOMPARE(fixture.value("btnFileName")->toolTip(), QString());
    fixture.editor->applyEditorState({{QStringLiteral("FileName"), path}}, {}, false);
    QCOMPARE(fixture.value("btnFileName")->toolTip(), path);
    fixture.editor->resize(6000, fixture.editor->height()); // where it is not cut
    QTRY_VERIFY(
        std::none_of(labels.cbegin(), labels.cend(), [](const auto* label) { return label->isCut(); }));
    QCOMPARE(fixture.value("btnFileName")->toolTip(), path);
}

void ArbPanelSuite::autoScale_data()
{
    QTest::addColumn<QByteArray>("state");
    QTest::addColumn<QByteArray>("profile");
    QTest::addColumn<bool>("on");
    QTest::addColumn<bool>("usable");
    QTest::addColumn<bool>("scaleEditable");
    const auto row = [](const char* name, const char* state, const char* profile, bool on, bool usable,
                        bool scaleEditable) {
        QTest::newRow(name) << QByteArray(state) << QByteArray(profile) << on << usable << scaleEditable;
    };
    row("on", R"({"FileName":"a","AutoScale":true})", "{}", true, true, false);
    row("off", R"({"FileName":"a","AutoScale":false})", "{}", false, true, true);
    row("missing", R"({"FileName":"a"})", "{}", false, true, true);
    row("1", R"({"FileName":"a","AutoScale":1})", "{}", true, true, false);
    row("0", R"({"FileName":"a","AutoScale":0})", "{}", false, true, true);
    row("not whole", R"({"FileName":"a","AutoScale":0.5})", "{}", true, true, false);
    row("negative", R"({"FileName":"a","AutoScale":-1})", "{}", true, true, false);
    row("word", R"({"FileName":"a","AutoScale":"true"})", "{}", false, true, true);
    row("locked, off", R"({"FileName":"a","AutoScale":false})", R"({"autoScaleLocked":true})", true, false,
        false);
    row("locked, on", R"({"FileName":"a","AutoScale":true})", R"({"autoScaleLocked":true})", true, false,
        false);
    row("not locked", R"({"FileName":"a","AutoScale":false})", R"({"autoScaleLocked":false})", false, true,
        true);
    row("lock is no bool", R"({"FileName":"a","AutoScale":false})", R"({"autoScaleLocked":1})", false, true,
        true);
    row("on, no file", R"({"AutoScale":true})", "{}", true, false, false);
    row("off, no file", R"({"AutoScale":false})", "{}", false, false, false);
    row("locked, no file", "{}", R"({"autoScaleLocked":true})", true, false, false);
}

void ArbPanelSuite::autoScale()
{
    QFETCH(const QByteArray, state);
    QFETCH(const QByteArray, profile);
    QFETCH(const bool, on);
    QFETCH(const bool, usable);
    QFETCH(const bool, scaleEditable);
    const FormFixture fixture("playback");
    fixture.apply(state.constData(), profile.constData());
    QCOMPARE(fixture.onOff("btnAutoScale")->status(), on);
    QCOMPARE(fixture.onOff("btnAutoScale")->isEnabled(), usable);
    QCOMPARE(fixture.value("btnIQScale")->isEnabled(), scaleEditable);
    QCOMPARE(fixture.emitted(), 0);
}

void ArbPanelSuite::autoScaleComesBackAsItWas()
{
    for (const char* state :
         {R"({"FileName":"a","AutoScale":true})", R"({"FileName":"a","AutoScale":0.5})"}) {
        FormFixture fixture("playback");
        fixture.apply(state);
        QVERIFY(fixture.show());
        FormFixture::toggle(fixture.onOff("btnAutoScale"));
        QCOMPARE(fixture.setField(), json(R"({"key":"AutoScale","value":false})"));
        QVERIFY(fixture.onOff("btnAutoScale")->status());
        QVERIFY(!fixture.value("btnIQScale")->isEnabled());
    }
}

// The lock is no second thought: the switch does not go off and on again with each snapshot.
void ArbPanelSuite::lockedAutoScaleIsNotTouched()
{
    const FormFixture fixture("playback");
    fixture.apply(R"({"FileName":"a","AutoScale":false})", R"({"autoScaleLocked":true})");
    const QSignalSpy changes(fixture.onOff("btnAutoScale"), &SwitchButton::statusChanged);
    fixture.apply(R"({"FileName":"b","AutoScale":false})", R"({"autoScaleLocked":true})");
    QVERIFY(changes.isEmpty());
    fixture.apply(R"({"FileName":"b","AutoScale":false})");
    QCOMPARE(changes.count(), 1);
}

void ArbPanelSuite::fieldsAreEditable_data()
{
    QTest::addColumn<QString>("flag");
    QTest::addColumn<QString>("button");
    QTest::newRow("offset") << QStringLiteral("sampleOffsetEditable") << QStringLiteral("btnSampleOffset");
    QTest::newRow("samples") << QStringLiteral("samplesToUseEditable") << QStringLiteral("btnSamplesToUse");
    QTest::newRow("period") << QStringLiteral("periodEditable") << QStringLiteral("btnPeriod");
}

void ArbPanelSuite::fieldsAreEditable()
{
    QFETCH(const QString, flag);
    QFETCH(const QString, button);
    const FormFixture fixture("playback");
    const auto editable = [&](const QJsonObject& profile, const char* file = "/a.wav") {
        fixture.editor->applyEditorState({{QStringLiteral("FileName"), QLatin1String(file)}}, profile, false);
        QStringList names;
        for (const char* name : {"btnSampleOffset", "btnSamplesToUse", "btnPeriod"}) {
            if (fixture.value(name)->isEnabled())
                names.append(QLatin1String(name));
        }
        return names;
    };
    const QStringList all = editable({});
    QCOMPARE(all.size(), 3);
    QCOMPARE(editable({{flag, true}}), all);
    QStringList others = all;
    others.removeOne(button);
    QCOMPARE(editable({{flag, false}}), others);
    QCOMPARE(editable({{flag, 0}}), all); // no bool: as if it were absent
    QCOMPARE(editable({{flag, true}}, ""), QStringList());
}

void ArbPanelSuite::lengths_data()
{
    QTest::addColumn<QByteArray>("state");
    QTest::addColumn<QString>("signal");
    QTest::addColumn<QString>("period");
    const auto row = [](const char* name, const char* state, const char* signal, const char* period) {
        QTest::newRow(name) << QByteArray(state) << QString::fromUtf8(signal) << QString::fromUtf8(period);
    };
    row("usual", R"({"SamplesToUse":1000,"Period":2500,"SampleRate":1e6})", "1ms", "2.5ms");
    row("three decimals", R"({"SamplesToUse":1,"Period":2,"SampleRate":3})", "333.333ms", "666.667ms");
    row("rate 0", R"({"SamplesToUse":1000,"Period":2500,"SampleRate":0})", "0s", "0s");
    row("negative rate", R"({"SamplesToUse":1000,"Period":2500,"SampleRate":-1})", "0s", "0s");
    row("no rate", R"({"SamplesToUse":1000,"Period":2500})", "0s", "0s");
    row("no samples", R"({"SamplesToUse":0,"Period":100,"SampleRate":1e3})", "0s", "100ms");
    row("no period", R"({"SamplesToUse":100,"SampleRate":1e3})", "100ms", "0s");
    row("negative counts", R"({"SamplesToUse":-1,"Period":-0.5,"SampleRate":1e3})", "0s", "0s");
    row("parts of a sample", R"({"SamplesToUse":0.9,"Period":1.9,"SampleRate":1})", "0s", "1s");
    row("words", R"({"SamplesToUse":"9","Period":[1],"SampleRate":1})", "0s", "0s");
    row("beyond 32 bits", R"({"SamplesToUse":8589934592,"Period":4294967296,"SampleRate":4294967296})", "2s",
        "1s");
}

void ArbPanelSuite::lengths()
{
    QFETCH(const QByteArray, state);
    QFETCH(const QString, signal);
    QFETCH(const QString, period);
    const FormFixture fixture("playback");
    fixture.apply(state.constData());
    QCOMPARE(fixture.shown("btnSignalLen"), signal);
    QCOMPARE(fixture.shown("btnPeriodLen"), period);
}

void ArbPanelSuite::wholeCounts_data()
{
    QTest::addColumn<QJsonValue>("value");
    QTest::addColumn<quint64>("count");
    QTest::newRow("usual") << QJsonValue(123456789) << quint64(123456789);
    QTest::newRow("0") << QJsonValue(0) << quint64(0);
    QTest::newRow("negative") << QJsonValue(-1) << quint64(0);
    QTest::newRow("far below") << QJsonValue(-1e300) << quint64(0);
    QTest::newRow("fraction") << QJsonValue(7.9) << quint64(7);
    QTest::newRow("beyond 32 bits") << QJsonValue(4294967297.0) << (quint64(1) << 32U) + 1;
    QTest::newRow("beyond 64 bits") << QJsonValue(1e300) << std::numeric_limits<quint64>::max();
    QTest::newRow("the first beyond")
        << QJsonValue(18446744073709551616.0) << std::numeric_limits<quint64>::max();
    QTest::newRow("word") << QJsonValue(QStringLiteral("7")) << quint64(0);
    QTest::newRow("null") << QJsonValue() << quint64(0);
    QTest::newRow("missing") << QJsonValue(QJsonValue::Undefined) << quint64(0);
}

void ArbPanelSuite::wholeCounts()
{
    QFETCH(const QJsonValue, value);
    QFETCH(const quint64, count);
    QCOMPARE(wholeCount(value), count);
    const FormFixture fixture("playback");
    fixture.editor->applyEditorState({}, {{QStringLiteral("samplesInFile"), value}}, false);
    QCOMPARE(fixture.shown("btnSamplesInFile"), QString::number(count));
}

void ArbPanelSuite::informationCannotBePressed()
{
    FormFixture fixture("playback");
    QVERIFY(fixture.show());
    for (const char* name : {"btnFileName", "btnSignalLen", "btnSamplesInFile", "btnPeriodLen"}) {
        QVERIFY(fixture.value(name)->isReadOnly() && fixture.value(name)->isEnabled());
        QTest::mouseClick(fixture.value(name), Qt::LeftButton);
    }
    QCOMPARE(fixture.requests->count() + fixture.emitted(), 0);
}

std::unique_ptr<QObject> makeArbPanelSuite()
{
    return std::make_unique<ArbPanelSuite>();
}

#include "ArbPanelSuite.moc"
