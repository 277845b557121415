#include "controls/EnumTextButton.h"
#include "controls/SwitchButton.h"
#include "modeditors/EditorFixture.h"
#include "modeditors/EditorSuites.h"

#include <QCheckBox>
#include <QJsonArray>
#include <QtTest>

namespace {

constexpr char state[] = R"({"PN":9, "FilterAlpha":0.3, "ModulationType":"QAM64", "FilterType":"RaisedCosine",
    "Oversample":4})";
constexpr char profile[] = R"({"defaultTrimDownload":true, "modulationTypeOptions":["QAM16",3,"QAM64","QPSK"],
    "filterTypeOptions":["None","RaisedCosine"], "oversampleOptions":[2,4,8.0]})";

QJsonObject setField(const char* key, const QJsonValue& value)
{
    return {{QStringLiteral("key"), QLatin1String(key)}, {QStringLiteral("value"), value}};
}

} // namespace

// What leaves the digital editor when the user edits, and that the confirmed state shows again at once.
class DigitalEditsSuite final : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_fixture.reset(); }
    void enableSwitch_data();
    void enableSwitch();
    void enableSwitchByKeys();
    void picker_data();
    void picker();
    void pickerTakesNoOtherIndex_data();
    void pickerTakesNoOtherIndex();
    void currentItemMayBeChosenAgain();
    void defaultTrim_data();
    void defaultTrim();
    void defaultTrimByKey();
    void wholeNumbersAreRounded_data();
    void wholeNumbersAreRounded();
    void aFieldThatCannotBeEditedSendsNothing();
    void aStateThatComesDuringAnEditWins();

private:
    std::unique_ptr<EditorFixture> m_fixture;
    QStringList m_confirmed;
};

void DigitalEditsSuite::init()
{
    m_fixture = std::make_unique<EditorFixture>(QStringLiteral("digital"));
    m_fixture->apply(parsed(state), parsed(profile));
    m_confirmed = m_fixture->shown();
}

void DigitalEditsSuite::enableSwitch_data()
{
    QTest::addColumn<bool>("enabled");
    QTest::newRow("off to on") << false;
    QTest::newRow("on to off") << true;
}

void DigitalEditsSuite::enableSwitch()
{
    QFETCH(const bool, enabled);
    m_fixture->apply(parsed(state), parsed(profile), enabled);
    QVector<bool> read;
    connect(&m_fixture->editor(), &RemoteModEditor::enabledEdited, this,
            [&] { read.append(m_fixture->editor().isModulationEnabled()); });
    for (int turn = 1; turn <= 2; ++turn) { // once more, as long as nothing has answered
        m_fixture->clickHalf(QStringLiteral("enabled"), !enabled);
        QCOMPARE(m_fixture->enables.count(), turn);
        QCOMPARE(m_fixture->emitted(), turn);
        QCOMPARE(m_fixture->editor().isModulationEnabled(), enabled);
    }
    QCOMPARE(read, QVector<bool>(2, !enabled));
    m_fixture->clickHalf(QStringLiteral("enabled"), enabled); // is so already
    QCOMPARE(m_fixture->emitted(), 2);
    m_fixture->apply(parsed(state), parsed(profile), !enabled);
    QCOMPARE(m_fixture->editor().isModulationEnabled(), !enabled);
    QCOMPARE(m_fixture->emitted(), 2);
}

void DigitalEditsSuite::enableSwitchByKeys()
{
    auto* const enabled = m_fixture->find<SwitchButton>(QStringLiteral("enabled"));
    QTest::keyClick(enabled, Qt::Key_Space);
    QCOMPARE(m_fixture->enables.count(), 1);
    QCOMPARE(m_fixture->shown(), m_confirmed);
}

void DigitalEditsSuite::picker_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("index");
    QTest::addColumn<QJsonObject>("arguments");
    QTest::newRow("modulation, first")
        << QStringLiteral("modulationType") << 0 << setField("ModulationType", QStringLiteral("QAM16"));
    QTest::newRow("modulation, behind one that is no text")
        << QStringLiteral("modulationType") << 2 << setField("ModulationType", QStringLiteral("QPSK"));
    QTest::newRow("filter") << QStringLiteral("filterType") << 0
                            << setField("FilterType", QStringLiteral("None"));
    QTest::newRow("oversample") << QStringLiteral("oversample") << 0 << setField("Oversample", 2);
    QTest::newRow("oversample, last") << QStringLiteral("oversample") << 2 << setField("Oversample", 8.0);
}

void DigitalEditsSuite::picker()
{
    QFETCH(const QString, name);
    QFETCH(const int, index);
    QFETCH(const QJsonObject, arguments);
    m_fixture->pick(name, index);
    QCOMPARE(m_fixture->emitted(), 1);
    QCOMPARE(m_fixture->edit(0).action, QStringLiteral("set-field"));
    QCOMPARE(m_fixture->edit(0).arguments, arguments);
    QCOMPARE(m_fixture->shown(), m_confirmed);
}

void DigitalEditsSuite::pickerTakesNoOtherIndex_data()
{
    QTest::addColumn<QString>("name");
    for (const char* name : {"modulationType", "filterType", "oversample"}) {
        QTest::newRow(name) << QString::fromLatin1(name);
    }
}

void DigitalEditsSuite::pickerTakesNoOtherIndex()
{
    QFETCH(const QString, name);
    auto* const button = m_fixture->find<EnumTextButton>(name);
    for (const int index : {-1, -1000, button->enums().size(), 1000}) {
        emit button->currentItemEdited(index);
    }
    QCOMPARE(m_fixture->emitted(), 0);
    m_fixture->apply({}, {}); // no options at all
    emit button->currentItemEdited(0);
    QCOMPARE(m_fixture->emitted(), 0);
}

void DigitalEditsSuite::currentItemMayBeChosenAgain()
{
    m_fixture->pick(QStringLiteral("modulationType"), 1);
    QCOMPARE(m_fixture->lastArguments(), setField("ModulationType", QStringLiteral("QAM64")));
    QCOMPARE(m_fixture->shown(), m_confirmed);
}

void DigitalEditsSuite::defaultTrim_data()
{
    QTest::addColumn<bool>("checked");
    QTest::newRow("checked") << true;
    QTest::newRow("unchecked") << false;
}

void DigitalEditsSuite::defaultTrim()
{
    QFETCH(const bool, checked);
    const auto* const box = m_fixture->find<QCheckBox>(QStringLiteral("defaultTrimDownload"));
    m_fixture->apply({}, {{QStringLiteral("defaultTrimDownload"), checked}});
    for (int turn = 1; turn <= 2; ++turn) {
        m_fixture->click(box->objectName());
        QCOMPARE(m_fixture->emitted(), turn);
        QCOMPARE(m_fixture->edit(turn - 1).action, QStringLiteral("set-default-trim"));
        QCOMPARE(m_fixture->lastArguments(), QJsonObject({{QStringLiteral("value"), !checked}}));
        QCOMPARE(box->isChecked(), checked);
    }
    m_fixture->apply({}, {{QStringLiteral("defaultTrimDownload"), !checked}});
    QCOMPARE(box->isChecked(), !checked);
    QCOMPARE(m_fixture->emitted(), 2);
}

void DigitalEditsSuite::defaultTrimByKey()
{
    QTest::keyClick(m_fixture->find<QCheckBox>(QStringLiteral("defaultTrimDownload")), Qt::Key_Space);
    QCOMPARE(m_fixture->lastArguments(), QJsonObject({{QStringLiteral("value"), false}}));
    QCOMPARE(m_fixture->shown(), m_confirmed);
}

void DigitalEditsSuite::wholeNumbersAreRounded_data()
{
    QTest::addColumn<double>("entered");
    QTest::addColumn<double>("sent");
    QTest::newRow("up") << 7.6 << 8.0;
    QTest::newRow("down") << 7.4 << 7.0;
    QTest::newRow("half") << 7.5 << 8.0;
    QTest::newRow("half below zero") << -2.5 << -3.0;
    QTest::newRow("large") << 4294967295.0 << 4294967295.0;
}

void DigitalEditsSuite::wholeNumbersAreRounded()
{
    QFETCH(const double, entered);
    QFETCH(const double, sent);
    for (const char* key : {"PN", "FilterLength", "SequenceSeed"}) {
        m_fixture->editor().applyNumericValue(QLatin1String(key), entered);
        QCOMPARE(m_fixture->lastArguments(), setField(key, sent));
    }
    QCOMPARE(m_fixture->shown(), m_confirmed);
}

void DigitalEditsSuite::aFieldThatCannotBeEditedSendsNothing()
{
    for (const char* key : {"FilterAlpha", "FSKDeviation"}) {
        m_fixture->editor().applyNumericValue(QLatin1String(key), 0.5);
    }
    QCOMPARE(m_fixture->emitted(), 0);
    m_fixture->apply({}, {{QStringLiteral("filterAlphaEditable"), true}});
    m_fixture->editor().applyNumericValue(QStringLiteral("FilterAlpha"), 0.5);
    QCOMPARE(m_fixture->lastArguments(), setField("FilterAlpha", 0.5));
}

// A main process in the same thread may answer before the edit's signal returns.
void DigitalEditsSuite::aStateThatComesDuringAnEditWins()
{
    connect(&m_fixture->editor(), &RemoteModEditor::actionEdited, this,
            [this](const QString&, const QJsonObject&) {
                QJsonObject answered = parsed(state);
                answered.insert(QStringLiteral("ModulationType"), QStringLiteral("QPSK"));
                m_fixture->apply(answered, parsed(profile), true);
            });
    m_fixture->pick(QStringLiteral("modulationType"), 0);
    QCOMPARE(m_fixture->label(QStringLiteral("modulationType")), QStringLiteral("QPSK"));
    QVERIFY(m_fixture->editor().isModulationEnabled());
    QCOMPARE(m_fixture->emitted(), 1);
}

std::unique_ptr<QObject> makeDigitalEditsSuite()
{
    return std::make_unique<DigitalEditsSuite>();
}

#include "DigitalEditsSuite.moc"
