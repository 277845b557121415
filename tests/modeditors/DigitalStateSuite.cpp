#include "controls/EnumTextButton.h"
#include "controls/SwitchButton.h"
#include "modeditors/EditorFixture.h"
#include "modeditors/EditorSuites.h"
#include "support/TouchCounter.h"

#include <QCheckBox>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>
#include <QTest>
#include <QVector>

namespace {

constexpr char fullState[] = R"({"SymbolRate":2.5e6, "FilterAlpha":0.35, "PN":9, "FilterLength":32,
    "SequenceSeed":12345, "FSKDeviation":250000, "ModulationType":"QAM64", "FilterType":"RaisedCosine",
    "Oversample":4})";
constexpr char fullProfile[] = R"({"defaultTrimDownload":false, "filterAlphaEditable":true,
    "fskDeviationEditable":true, "modulationTypeOptions":["QAM16","QAM64","QPSK"],
    "filterTypeOptions":["None","RaisedCosine"], "oversampleOptions":[2,4,8],
    "trimmedDownloadRequired":true, "fullWaveformEstimatedBytes":1500000000})";

} // namespace

// What the digital editor shows of state and profile.
class DigitalStateSuite final : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_fixture = std::make_unique<EditorFixture>(QStringLiteral("digital")); }
    void cleanup() { m_fixture.reset(); }
    void fieldText_data();
    void fieldText();
    void enableSwitch();
    void defaultTrim_data();
    void defaultTrim();
    void trimWarning_data();
    void trimWarning();
    void editableFields_data();
    void editableFields();
    void stringPicker_data();
    void stringPicker();
    void oversample_data();
    void oversample();
    void applyingEmitsNothing();
    void anEqualStateTouchesNothing_data();
    void anEqualStateTouchesNothing();
    void anOpenListStaysOpen();
    void mistypedKeysAreHarmless();

private:
    std::unique_ptr<EditorFixture> m_fixture;
};

void DigitalStateSuite::fieldText_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QJsonValue>("value");
    QTest::addColumn<QString>("text");
    const auto row = [](const char* button, const char* key, const QJsonValue& value, const char* text) {
        QTest::addRow("%s %s", key, text)
            << QString::fromLatin1(button) << QString::fromLatin1(key) << value << QString::fromLatin1(text);
    };
    row("symbolRate", "SymbolRate", 2.5e6, "2.5MHz");
    row("symbolRate", "SymbolRate", 1, "1Hz");
    row("symbolRate", "SymbolRate", QJsonValue(), "0Hz");
    row("filterAlpha", "FilterAlpha", 0.35, "0.35");
    row("filterAlpha", "FilterAlpha", 0.5, "0.5");
    row("filterAlpha", "FilterAlpha", 0.125, "0.13");
    row("filterAlpha", "FilterAlpha", QJsonValue(), "0");
    row("pn", "PN", 23, "23");
    row("pn", "PN", QJsonValue(), "0");
    row("filterLength", "FilterLength", 128, "128");
    row("sequenceSeed", "SequenceSeed", 12345, "12345");
    row("sequenceSeed", "SequenceSeed", 2.5, "3");
    row("sequenceSeed", "SequenceSeed", 2.4999, "2");
    row("sequenceSeed", "SequenceSeed", -2.5, "-2");
    row("sequenceSeed", "SequenceSeed", -0.5, "0");
    row("sequenceSeed", "SequenceSeed", 0.49999999999999994, "0");
    row("sequenceSeed", "SequenceSeed", 4294967295.0, "4294967295");
    row("sequenceSeed", "SequenceSeed", 9007199254740993.0, "9007199254740992");
    row("sequenceSeed", "SequenceSeed", QStringLiteral("7"), "0");
    row("fskDeviation", "FSKDeviation", 250e3, "250kHz");
}

void DigitalStateSuite::fieldText()
{
    QFETCH(const QString, button);
    QFETCH(const QString, key);
    QFETCH(const QJsonValue, value);
    m_fixture->apply({{key, value}});
    QTEST(m_fixture->label(button), "text");
}

void DigitalStateSuite::enableSwitch()
{
    const auto* const enabled = m_fixture->find<SwitchButton>(QStringLiteral("enabled"));
    for (const bool on : {true, false, true}) {
        m_fixture->apply({}, {}, on);
        QCOMPARE(enabled->status(), on);
        QCOMPARE(m_fixture->editor().isModulationEnabled(), on);
    }
}

void DigitalStateSuite::defaultTrim_data()
{
    QTest::addColumn<QByteArray>("profile");
    QTest::addColumn<bool>("checked");
    QTest::newRow("absent") << QByteArray("{}") << true;
    QTest::newRow("true") << QByteArray(R"({"defaultTrimDownload":true})") << true;
    QTest::newRow("false") << QByteArray(R"({"defaultTrimDownload":false})") << false;
    QTest::newRow("no bool") << QByteArray(R"({"defaultTrimDownload":0})") << true;
}

void DigitalStateSuite::defaultTrim()
{
    QFETCH(const QByteArray, profile);
    QFETCH(const bool, checked);
    auto* const box = m_fixture->find<QCheckBox>(QStringLiteral("defaultTrimDownload"));
    m_fixture->apply({}, {{QStringLiteral("defaultTrimDownload"), !checked}});
    QCOMPARE(box->isChecked(), !checked);
    m_fixture->apply({}, parsed(profile.constData()));
    QCOMPARE(box->isChecked(), checked);
}

void DigitalStateSuite::trimWarning_data()
{
    QTest::addColumn<QByteArray>("profile");
    QTest::addColumn<QString>("size");
    QTest::newRow("required")
        << QByteArray(R"({"trimmedDownloadRequired":true,"fullWaveformEstimatedBytes":1500000000})")
        << QStringLiteral("1.5 GB");
    QTest::newRow("truncated")
        << QByteArray(R"({"trimmedDownloadRequired":true,"fullWaveformEstimatedBytes":999.9})")
        << QStringLiteral("999 B");
    QTest::newRow("without a size") << QByteArray(R"({"trimmedDownloadRequired":true})")
                                    << QStringLiteral("0 B");
    QTest::newRow("more than 64 bits")
        << QByteArray(R"({"trimmedDownloadRequired":true,"fullWaveformEstimatedBytes":1e300})")
        << QStringLiteral("9.2 EB");
    QTest::newRow("far below zero")
        << QByteArray(R"({"trimmedDownloadRequired":true,"fullWaveformEstimatedBytes":-1e300})")
        << QStringLiteral("0 B");
    QTest::newRow("not required")
        << QByteArray(R"({"trimmedDownloadRequired":false,"fullWaveformEstimatedBytes":1500000000})")
        << QString();
    QTest::newRow("not said") << QByteArray(R"({"fullWaveformEstimatedBytes":1500000000})") << QString();
}

void DigitalStateSuite::trimWarning()
{
    QFETCH(const QByteArray, profile);
    QFETCH(const QString, size);
    const auto* const box = m_fixture->find<QCheckBox>(QStringLiteral("defaultTrimDownload"));
    m_fixture->apply({}, parsed(fullProfile));
    QVERIFY(!box->toolTip().isEmpty());
    m_fixture->apply({}, parsed(profile.constData()));
    QCOMPARE(box->toolTip(), size.isEmpty()
                                 ? QString()
                                 : QString(QLatin1String("The full waveform is approximately ") + size +
                                           QLatin1String(" and will be trimmed for download.")));
}

void DigitalStateSuite::editableFields_data()
{
    QTest::addColumn<QString>("flag");
    QTest::addColumn<QString>("button");
    QTest::newRow("FilterAlpha") << QStringLiteral("filterAlphaEditable") << QStringLiteral("filterAlpha");
    QTest::newRow("FSKDeviation") << QStringLiteral("fskDeviationEditable") << QStringLiteral("fskDeviation");
}

void DigitalStateSuite::editableFields()
{
    QFETCH(const QString, flag);
    QFETCH(const QString, button);
    const auto* const widget = m_fixture->find<QWidget>(button);
    m_fixture->apply({}, {{flag, true}});
    QVERIFY(widget->isEnabled());
    m_fixture->apply({}, {{flag, false}});
    QVERIFY(!widget->isEnabled());
    m_fixture->click(button);
    QCOMPARE(m_fixture->emitted(), 0);
    m_fixture->apply({}, {{flag, true}});
    m_fixture->apply({}, {});
    QVERIFY(!widget->isEnabled());
}

void DigitalStateSuite::stringPicker_data()
{
    QTest::addColumn<QByteArray>("options");
    QTest::addColumn<QString>("current");
    QTest::addColumn<QString>("entries");
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("label");
    const auto row = [](const char* name, const char* options, const char* current, const char* entries,
                        int index, const char* label) {
        QTest::newRow(name) << QByteArray(options) << QString::fromLatin1(current)
                            << QString::fromLatin1(entries) << index << QString::fromLatin1(label);
    };
    row("known", R"(["QAM16","QAM64"])", "QAM64", "16QAM,64QAM", 1, "64QAM");
    row("no options", "[]", "QAM64", "", -1, "QAM64");
    row("not among the options", R"(["QAM16"])", "QAM64", "16QAM", -1, "QAM64");
    row("shown name is no value", R"(["QAM64"])", "64QAM", "64QAM", -1, "64QAM");
    row("the first of two", R"(["QPSK","QAM64","QAM64"])", "QAM64", "QPSK,64QAM,64QAM", 1, "64QAM");
    row("others than texts", R"([1,"QPSK",null,{},"QAM64",true])", "QAM64", "QPSK,64QAM", 1, "64QAM");
    row("nothing current", R"(["QPSK"])", "", "QPSK", -1, "");
}

void DigitalStateSuite::stringPicker()
{
    QFETCH(const QByteArray, options);
    QFETCH(const QString, current);
    for (const char* name : {"modulationType", "filterType"}) {
        const bool filter = qstrcmp(name, "filterType") == 0;
        const QString key = filter ? QStringLiteral("FilterType") : QStringLiteral("ModulationType");
        const QJsonArray array = QJsonDocument::fromJson(options).array();
        m_fixture->apply(parsed(fullState), parsed(fullProfile)); // something else before
        m_fixture->apply({{key, current}}, {{QLatin1String(name) + QLatin1String("Options"), array}});
        const auto* const picker = m_fixture->find<EnumTextButton>(QLatin1String(name));
        QTEST(picker->enums().join(QLatin1Char(',')), "entries");
        QTEST(picker->currentEnum(), "index");
        QTEST(picker->labelText(), "label");
    }
}

void DigitalStateSuite::oversample_data()
{
    QTest::addColumn<QByteArray>("options");
    QTest::addColumn<int>("current");
    QTest::addColumn<QString>("entries");
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("label");
    QTest::newRow("the last of two") << QByteArray("[2,4,4]") << 4 << QStringLiteral("2,4,4") << 2
                                     << QStringLiteral("4");
    QTest::newRow("one") << QByteArray("[2,4,8]") << 2 << QStringLiteral("2,4,8") << 0 << QStringLiteral("2");
    QTest::newRow("none") << QByteArray("[2,4,8]") << 3 << QStringLiteral("2,4,8") << -1 << QString();
    QTest::newRow("no options") << QByteArray("[]") << 4 << QString() << -1 << QString();
}

void DigitalStateSuite::oversample()
{
    QFETCH(const QByteArray, options);
    QFETCH(const int, current);
    m_fixture->apply(parsed(fullState), parsed(fullProfile)); // something else before
    m_fixture->apply({{QStringLiteral("Oversample"), current}},
                     {{QStringLiteral("oversampleOptions"), QJsonDocument::fromJson(options).array()}});
    const auto* const picker = m_fixture->find<EnumTextButton>(QStringLiteral("oversample"));
    QTEST(picker->enums().join(QLatin1Char(',')), "entries");
    QTEST(picker->currentEnum(), "index");
    QTEST(picker->labelText(), "label");
}

void DigitalStateSuite::applyingEmitsNothing()
{
    for (const bool on : {true, false, true}) {
        m_fixture->apply(parsed(fullState), parsed(fullProfile), on);
        m_fixture->apply({}, {}, !on);
    }
    QCOMPARE(m_fixture->emitted(), 0);
}

void DigitalStateSuite::anEqualStateTouchesNothing_data()
{
    QTest::addColumn<QByteArray>("state");
    QTest::addColumn<QByteArray>("profile");
    QTest::newRow("full") << QByteArray(fullState) << QByteArray(fullProfile);
    QTest::newRow("empty") << QByteArray("{}") << QByteArray("{}");
    QTest::newRow("unknown values") << QByteArray(fullState)
                                    << QByteArray(
                                           R"({"modulationTypeOptions":["QPSK"],"oversampleOptions":[7]})");
}

void DigitalStateSuite::anEqualStateTouchesNothing()
{
    QFETCH(const QByteArray, state);
    QFETCH(const QByteArray, profile);
    m_fixture->apply(parsed(state.constData()), parsed(profile.constData()), true);
    QCoreApplication::processEvents();
    TestSupport::TouchCounter counter(m_fixture->editor());
    m_fixture->apply(parsed(state.constData()), parsed(profile.constData()), true);
    QCoreApplication::processEvents();
    QCOMPARE(counter.touches, 0);
    m_fixture->apply(parsed(state.constData()), parsed(profile.constData()), false);
    QTRY_VERIFY(counter.touches > 0); // the counter counts
}

void DigitalStateSuite::anOpenListStaysOpen()
{
    m_fixture->apply(parsed(fullState), parsed(fullProfile));
    auto* const picker = m_fixture->find<EnumTextButton>(QStringLiteral("filterType"));
    m_fixture->click(picker->objectName());
    QTRY_VERIFY(picker->isListOpen());
    QJsonObject state = parsed(fullState);
    state.insert(QStringLiteral("PN"), 11);
    m_fixture->apply(state, parsed(fullProfile), true);
    QVERIFY(picker->isListOpen());
    QCOMPARE(m_fixture->label(QStringLiteral("pn")), QStringLiteral("11"));
    QTest::keyClick(QApplication::focusWidget() ? QApplication::focusWidget() : picker, Qt::Key_Escape);
}

void DigitalStateSuite::mistypedKeysAreHarmless()
{
    QJsonObject state = parsed(fullState);
    QJsonObject profile = parsed(fullProfile);
    const QVector<QJsonValue> wrong = {QJsonValue(),
                                       true,
                                       -1e308,
                                       QStringLiteral("x"),
                                       QJsonArray{1, {}},
                                       QJsonObject{{QStringLiteral("a"), 1}}};
    for (const QJsonValue& value : wrong) {
        const QStringList stateKeys = state.keys();
        for (const QString& key : stateKeys) {
            state.insert(key, value);
        }
        const QStringList profileKeys = profile.keys();
        for (const QString& key : profileKeys) {
            profile.insert(key, value);
        }
        m_fixture->apply(state, profile, true);
        QCOMPARE(m_fixture->label(QStringLiteral("pn")), QStringLiteral("0"));
    }
    m_fixture->apply(parsed(fullState), parsed(fullProfile), true);
    EditorFixture fresh(QStringLiteral("digital"));
    fresh.apply(parsed(fullState), parsed(fullProfile), true);
    QCOMPARE(m_fixture->shown(), fresh.shown());
    QCOMPARE(m_fixture->emitted(), 0);
}

std::unique_ptr<QObject> makeDigitalStateSuite()
{
    return std::make_unique<DigitalStateSuite>();
}

#include "DigitalStateSuite.moc"
