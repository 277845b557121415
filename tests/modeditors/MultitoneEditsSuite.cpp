#include "controls/EnumTextButton.h"
#include "controls/SwitchButton.h"
#include "modeditors/EditorFixture.h"
#include "modeditors/EditorSuites.h"

#include <QJsonArray>
#include <QTableWidget>
#include <QtTest>

namespace {

constexpr char state[] = R"({"PhaseMode":1, "Seed":1, "Count":2, "FreqSpacing":1e6, "NotchWidth":2500})";
constexpr char profile[] = R"({"discreteKeepToneMode":true, "candidateTones":[
    {"requestedFrequency":3e6, "latticeIndex":7},
    {"requestedFrequency":1e6, "latticeIndex":2, "enabled":true}]})";

QJsonObject value(const QJsonValue& edited)
{
    return {{QStringLiteral("value"), edited}};
}

} // namespace

// What leaves the multitone editor when the user edits, and that the confirmed state shows again at once.
class MultitoneEditsSuite final : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_fixture.reset(); }
    void enableSwitch();
    void discreteSwitch_data();
    void discreteSwitch();
    void phase_data();
    void phase();
    void phaseTakesNoOtherIndex();
    void aToneIsToggled();
    void theLastToneIsUnchecked();
    void theWholeSelectionIsSent();
    void otherColumnsChangeNothing();
    void aDisabledTableTakesNoClick();
    void aChangedMarkIsAnEdit();
    void otherItemsAreNoEdit();
    void aStateThatComesDuringAToggleWins();
    void aShorterListDuringAToggleIsSurvived();

private:
    void clickCell(int row, int column) const;

    std::unique_ptr<EditorFixture> m_fixture;
    QTableWidget* m_table = nullptr;
    QStringList m_confirmed;
};

void MultitoneEditsSuite::init()
{
    m_fixture = std::make_unique<EditorFixture>(QStringLiteral("multitone"));
    m_table = m_fixture->find<QTableWidget>(QStringLiteral("toneTable"));
    m_fixture->apply(parsed(state), parsed(profile));
    m_confirmed = m_fixture->shown();
}

void MultitoneEditsSuite::clickCell(int row, int column) const
{
    QTest::mouseClick(m_table->viewport(), Qt::LeftButton, {},
                      m_table->visualItemRect(m_table->item(row, column)).center());
}

void MultitoneEditsSuite::enableSwitch()
{
    QVector<bool> read;
    connect(&m_fixture->editor(), &RemoteModEditor::enabledEdited, this,
            [&] { read.append(m_fixture->editor().isModulationEnabled()); });
    m_fixture->clickHalf(QStringLiteral("enabled"), true);
    QCOMPARE(read, QVector<bool>{true});
    QCOMPARE(m_fixture->emitted(), 1);
    QCOMPARE(m_fixture->shown(), m_confirmed);
}

void MultitoneEditsSuite::discreteSwitch_data()
{
    QTest::addColumn<bool>("discrete");
    QTest::newRow("on to off") << true;
    QTest::newRow("off to on") << false;
}

void MultitoneEditsSuite::discreteSwitch()
{
    QFETCH(const bool, discrete);
    m_fixture->apply({}, {{QStringLiteral("discreteKeepToneMode"), discrete}});
    const QStringList confirmed = m_fixture->shown();
    for (int turn = 1; turn <= 2; ++turn) {
        m_fixture->clickHalf(QStringLiteral("btnDiscreteKeepToneMode"), !discrete);
        QCOMPARE(m_fixture->emitted(), turn);
        QCOMPARE(m_fixture->edit(turn - 1).action, QStringLiteral("set-discrete-mode"));
        QCOMPARE(m_fixture->lastArguments(), value(!discrete));
        QCOMPARE(m_fixture->shown(), confirmed);
    }
}

void MultitoneEditsSuite::phase_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("fixed") << 0;
    QTest::newRow("random, which is so already") << 1;
    QTest::newRow("parabolic") << 2;
}

void MultitoneEditsSuite::phase()
{
    QFETCH(const int, index);
    m_fixture->pick(QStringLiteral("btnTonePhase"), index);
    QCOMPARE(m_fixture->emitted(), 1);
    QCOMPARE(m_fixture->edit(0).action, QStringLiteral("set-field"));
    const QJsonObject expected = {{QStringLiteral("key"), QStringLiteral("PhaseMode")},
                                  {QStringLiteral("value"), index}};
    QCOMPARE(m_fixture->lastArguments(), expected);
    QCOMPARE(m_fixture->shown(), m_confirmed);
}

void MultitoneEditsSuite::phaseTakesNoOtherIndex()
{
    auto* const picker = m_fixture->find<EnumTextButton>(QStringLiteral("btnTonePhase"));
    for (const int index : {-1, 3, 1000}) {
        emit picker->currentItemEdited(index);
    }
    QCOMPARE(m_fixture->emitted(), 0);
}

void MultitoneEditsSuite::aToneIsToggled()
{
    QCOMPARE(m_table->item(0, 1)->text(), QStringLiteral("1MHz"));
    QCOMPARE(m_table->item(1, 1)->text(), QStringLiteral("3MHz"));
    for (int turn = 1; turn <= 2; ++turn) { // once more, as long as nothing has answered
        clickCell(1, 2);
        QCOMPARE(m_fixture->emitted(), turn);
        QCOMPARE(m_fixture->edit(turn - 1).action, QStringLiteral("set-enabled-tones"));
        QCOMPARE(m_fixture->lastArguments(), value(QJsonArray{2, 7}));
        QCOMPARE(m_fixture->shown(), m_confirmed);
    }
    QJsonObject answered = parsed(profile);
    QJsonArray tones = answered.value(QStringLiteral("candidateTones")).toArray();
    QJsonObject tone = tones.first().toObject();
    tone.insert(QStringLiteral("enabled"), true);
    tones.replace(0, tone);
    answered.insert(QStringLiteral("candidateTones"), tones);
    m_fixture->apply(parsed(state), answered);
    QCOMPARE(m_table->item(1, 2)->checkState(), Qt::Checked);
    QCOMPARE(m_fixture->emitted(), 2);
}

void MultitoneEditsSuite::theLastToneIsUnchecked()
{
    clickCell(0, 2);
    QCOMPARE(m_fixture->edit(0).action, QStringLiteral("set-enabled-tones"));
    QCOMPARE(m_fixture->lastArguments(), value(QJsonArray()));
    QVERIFY(m_fixture->lastArguments().value(QStringLiteral("value")).isArray());
    QCOMPARE(m_fixture->shown(), m_confirmed);
}

void MultitoneEditsSuite::theWholeSelectionIsSent()
{
    constexpr int count = 300;
    QJsonArray tones;
    QJsonArray expected;
    for (int i = 0; i < count; ++i) {
        const bool enabled = i % 3 == 0;
        tones.prepend(QJsonObject{{QStringLiteral("requestedFrequency"), i * 1e3},
                                  {QStringLiteral("enabled"), enabled},
                                  {QStringLiteral("latticeIndex"), 1000 - i}});
        if (enabled || i == count - 2) {
            expected.append(1000 - i);
        }
    }
    m_fixture->apply(
        {}, {{QStringLiteral("discreteKeepToneMode"), true}, {QStringLiteral("candidateTones"), tones}});
    m_table->scrollToBottom();
    clickCell(count - 2, 2);
    QCOMPARE(m_fixture->emitted(), 1);
    QCOMPARE(m_fixture->lastArguments(), value(expected));
}

void MultitoneEditsSuite::otherColumnsChangeNothing()
{
    for (const int column : {0, 1}) {
        for (const int row : {0, 1}) {
            clickCell(row, column);
        }
    }
    QCOMPARE(m_fixture->emitted(), 0);
    QCOMPARE(m_fixture->shown(), m_confirmed);
}

void MultitoneEditsSuite::aDisabledTableTakesNoClick()
{
    QJsonObject notch = parsed(profile);
    notch.insert(QStringLiteral("discreteKeepToneMode"), false);
    m_fixture->apply(parsed(state), notch);
    clickCell(1, 2);
    QCOMPARE(m_fixture->emitted(), 0);
}

// However the mark has changed.
void MultitoneEditsSuite::aChangedMarkIsAnEdit()
{
    m_table->item(1, 2)->setCheckState(Qt::Checked);
    QCOMPARE(m_fixture->emitted(), 1);
    QCOMPARE(m_fixture->lastArguments(), value(QJsonArray{2, 7}));
    QCOMPARE(m_fixture->shown(), m_confirmed);
}

void MultitoneEditsSuite::otherItemsAreNoEdit()
{
    m_table->item(1, 0)->setText(QStringLiteral("9"));
    m_table->item(1, 1)->setText(QStringLiteral("9Hz"));
    QTableWidgetItem stranger;
    emit m_table->itemChanged(&stranger);
    emit m_table->cellClicked(5, 2);
    emit m_table->cellClicked(-1, 2);
    QCOMPARE(m_fixture->emitted(), 0);
}

// A main process in the same thread may answer before the edit's signal returns.
void MultitoneEditsSuite::aStateThatComesDuringAToggleWins()
{
    connect(&m_fixture->editor(), &RemoteModEditor::actionEdited, this,
            [this](const QString&, const QJsonObject&) {
                m_fixture->apply({}, parsed(R"({"discreteKeepToneMode":true, "candidateTones":[
            {"requestedFrequency":5e6, "latticeIndex":1}, {"requestedFrequency":6e6, "latticeIndex":3, "enabled":true}]})"));
            });
    clickCell(0, 2);
    QCOMPARE(m_table->item(0, 2)->checkState(), Qt::Unchecked);
    QCOMPARE(m_table->item(1, 2)->checkState(), Qt::Checked);
    QCOMPARE(m_table->item(1, 1)->text(), QStringLiteral("6MHz"));
    QCOMPARE(m_fixture->emitted(), 1);
}

void MultitoneEditsSuite::aShorterListDuringAToggleIsSurvived()
{
    connect(&m_fixture->editor(), &RemoteModEditor::actionEdited, this,
            [this](const QString&, const QJsonObject&) { m_fixture->apply({}, {}); });
    clickCell(1, 2);
    QCOMPARE(m_table->rowCount(), 0);
    QCOMPARE(m_fixture->emitted(), 1);
}

std::unique_ptr<QObject> makeMultitoneEditsSuite()
{
    return std::make_unique<MultitoneEditsSuite>();
}

#include "MultitoneEditsSuite.moc"
