// What the bar shows and what it sends: RF, frequency and level by pointer, keypad and physical keyboard, on
// a real screen. The window manager comes in TARVINEL_WINDOW_MANAGER.

#include "system/BarSession.h"

#include <QJsonDocument>
#include <QTest>

using namespace TestSupport;

namespace {

const QColor lightOff(0xdad1ca);
const QColor lightOn(0x63ACF6);
const QColor darkOff(0x252e35);
const QColor darkOn(0x00CE01);

QJsonObject request(int id, const char* command, const char* key, const QJsonValue& value)
{
    return {{QStringLiteral("v"), 1},
            {QStringLiteral("id"), id},
            {QStringLiteral("cmd"), QLatin1String(command)},
            {QStringLiteral("args"), QJsonObject{{QLatin1String(key), value}}}};
}

} // namespace

class TestQuickEdits final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void startTexts();
    void snapshotsInOrder();
    void rfShowsOnlyWhatIsConfirmed();
    void darkTheme();
    void typed_data();
    void typed();
    void clicked_data();
    void clicked();
    void escapeSendsNothing_data();
    void escapeSendsNothing();
    void otherEditReplacesKeypad();
    void hidingClosesKeypad();
    void assistiveProgramPressesButton();

private:
    PrivateDisplay m_display{qEnvironmentVariable("TARVINEL_WINDOW_MANAGER", QStringLiteral("icewm"))};
    Accessibility m_accessibility{m_display};
};

void TestQuickEdits::initTestCase()
{
    QVERIFY2(m_display.start(), qPrintable(m_display.errorString()));
    QVERIFY2(m_accessibility.start(), qPrintable(m_accessibility.errorString()));
}

void TestQuickEdits::startTexts()
{
    BarSession session(m_display, m_accessibility);
    QVERIFY(session.begin());
    QCOMPARE(session.shown(BarSession::Rf), QStringLiteral("OFF"));
    QCOMPARE(session.shown(BarSession::Frequency), QStringLiteral("--"));
    QCOMPARE(session.shown(BarSession::Level), QStringLiteral("--"));
    QVERIFY(session.expand());
    QCOMPARE(session.shown(BarSession::Sweep), QStringLiteral("Sweep"));
    QCOMPARE(session.shown(BarSession::Mod), QStringLiteral("OFF"));
}

void TestQuickEdits::snapshotsInOrder()
{
    BarSession session(m_display, m_accessibility);
    QVERIFY(session.begin());
    session.main().sendSnapshot(txSnapshot(5, false, 1e9, -20));
    QTRY_COMPARE(session.shown(BarSession::Frequency), QStringLiteral("1GHz"));
    QCOMPARE(session.shown(BarSession::Level), QStringLiteral("-20 dBm"));
    session.main().sendSnapshot(txSnapshot(4, false, 2e9, -20));
    QVERIFY(session.main().show()); // by its answer the snapshot has been handled
    QCOMPARE(session.shown(BarSession::Frequency), QStringLiteral("1GHz"));
    session.main().sendSnapshot(txSnapshot(0, false, 3e9, -20));
    QTRY_COMPARE(session.shown(BarSession::Frequency), QStringLiteral("3GHz"));
    session.main().sendSnapshot(txSnapshot(4, false, 4e9, -20));
    QVERIFY(session.main().show());
    QCOMPARE(session.shown(BarSession::Frequency), QStringLiteral("3GHz"));
    session.main().sendSnapshot(txSnapshot(5, false, 5e9, -20));
    QTRY_COMPARE(session.shown(BarSession::Frequency), QStringLiteral("5GHz"));
}

void TestQuickEdits::rfShowsOnlyWhatIsConfirmed()
{
    BarSession session(m_display, m_accessibility);
    QVERIFY(session.begin());
    QVERIFY(session.leave());
    QVERIFY(session.desktop().waitForPixel(session.corner(BarSession::Rf), lightOff));
    QVERIFY(session.click(session.centre(BarSession::Rf)));
    QVERIFY(session.main().waitForRequests(1));
    QCOMPARE(session.main().requests().first(), request(1, "OUTP:STAT", "enabled", true));
    QVERIFY(session.main().lines().last().raw.startsWith("REQ {"));
    QVERIFY(session.leave());
    QVERIFY(session.desktop().waitForPixel(session.corner(BarSession::Rf), lightOff));
    QCOMPARE(session.shown(BarSession::Rf), QStringLiteral("OFF"));
    session.main().sendSnapshot(txSnapshot(1, true, 1e9, -20));
    QVERIFY(session.desktop().waitForPixel(session.corner(BarSession::Rf), lightOn));
    QCOMPARE(session.shown(BarSession::Rf), QStringLiteral("ON"));
    QVERIFY(session.click(session.centre(BarSession::Rf)));
    QVERIFY(session.main().waitForRequests(2));
    QCOMPARE(session.main().requests().last(), request(2, "OUTP:STAT", "enabled", false));
    QVERIFY(session.leave());
    QVERIFY(session.desktop().waitForPixel(session.corner(BarSession::Rf), lightOn));
}

void TestQuickEdits::darkTheme()
{
    const StageCopy stage;
    QVERIFY(stage.isValid());
    QVERIFY(stage.write(QStringLiteral("configuration/Settings.ini"), "[APP]\nTheme=dark\n"));
    BarSession session(m_display, m_accessibility, helperPath(stage.path()));
    QVERIFY(session.begin());
    QVERIFY(session.leave());
    QVERIFY(session.desktop().waitForPixel(session.geometry().topLeft() + QPoint(4, 4), QColor(0x1f2329)));
    QVERIFY(session.desktop().waitForPixel(session.corner(BarSession::Rf), darkOff));
    session.main().sendSnapshot(txSnapshot(1, true, 1e9, -20));
    QVERIFY(session.desktop().waitForPixel(session.corner(BarSession::Rf), darkOn));
}

void TestQuickEdits::typed_data()
{
    QTest::addColumn<int>("button");
    QTest::addColumn<bool>("expanded");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("enter"); // a unit's letter ends the entry by itself
    QTest::addColumn<QJsonObject>("sent");
    const auto hz = [](double value) { return request(1, "SOUR:FREQ:CENT", "hz", value); };
    const auto dbm = [](double value) { return request(1, "SOUR:POW:LEV", "dbm", value); };
    const int frequency = BarSession::Frequency;
    const int level = BarSession::Level;
    QTest::newRow("2.4g") << frequency << false << QStringLiteral("2.4g") << false << hz(2.4e9);
    QTest::newRow("2.4g, expanded") << frequency << true << QStringLiteral("2.4g") << false << hz(2.4e9);
    QTest::newRow("100,5m") << frequency << false << QStringLiteral("100,5m") << false << hz(100.5e6);
    QTest::newRow("1.25 in the unit shown")
        << frequency << false << QStringLiteral("1.25") << true << hz(1.25e9);
    QTest::newRow("-20") << level << false << QStringLiteral("-20") << true << dbm(-20);
    QTest::newRow("-7.25, expanded") << level << true << QStringLiteral("-7.25") << true << dbm(-7.25);
}

void TestQuickEdits::typed()
{
    QFETCH(int, button);
    QFETCH(bool, expanded);
    QFETCH(QString, text);
    QFETCH(bool, enter);
    QFETCH(QJsonObject, sent);
    BarSession session(m_display, m_accessibility);
    QVERIFY(session.begin());
    session.main().sendSnapshot(txSnapshot(1, false, 1e9, -10));
    if (expanded)
        QVERIFY(session.expand());
    QVERIFY(session.openKeypad(BarSession::Button(button)));
    QVERIFY(session.desktop().type(text));
    if (enter)
        QVERIFY(session.desktop().key(QStringLiteral("Return")));
    QTRY_VERIFY(!session.isKeypadOpen());
    QVERIFY(session.main().show());
    QCOMPARE(session.main().requests(), QVector<QJsonObject>{sent});
    QCOMPARE(session.isExpanded(), expanded);
    QCOMPARE(session.shown(BarSession::Frequency), QStringLiteral("1GHz")); // until it is confirmed
}

void TestQuickEdits::clicked_data()
{
    QTest::addColumn<int>("button");
    QTest::addColumn<QStringList>("keys");
    QTest::addColumn<QJsonObject>("sent");
    const auto keys = [](const char* names) { return QString::fromLatin1(names).split(QLatin1Char('|')); };
    QTest::newRow("2.4 GHz") << int(BarSession::Frequency) << keys("2|Decimal point|4|GHz")
                             << request(1, "SOUR:FREQ:CENT", "hz", 2.4e9);
    QTest::newRow("-35 dBm") << int(BarSession::Level) << keys("3|5|Change sign|dBm")
                             << request(1, "SOUR:POW:LEV", "dbm", -35.0);
}

void TestQuickEdits::clicked()
{
    QFETCH(int, button);
    QFETCH(QStringList, keys);
    QFETCH(QJsonObject, sent);
    BarSession session(m_display, m_accessibility);
    QVERIFY(session.begin());
    session.main().sendSnapshot(txSnapshot(1, false, 1e9, -10));
    QVERIFY(session.openKeypad(BarSession::Button(button)));
    for (const QString& key : qAsConst(keys))
        QVERIFY2(session.clickKey(key), qPrintable(key));
    QTRY_VERIFY(!session.isKeypadOpen());
    QVERIFY(session.main().show());
    QCOMPARE(session.main().requests(), QVector<QJsonObject>{sent});
}

void TestQuickEdits::escapeSendsNothing_data()
{
    QTest::addColumn<bool>("expanded");
    QTest::newRow("collapsed") << false;
    QTest::newRow("expanded") << true;
}

void TestQuickEdits::escapeSendsNothing()
{
    QFETCH(bool, expanded);
    BarSession session(m_display, m_accessibility);
    QVERIFY(session.begin());
    if (expanded)
        QVERIFY(session.expand());
    QVERIFY(session.openKeypad(BarSession::Frequency));
    QVERIFY(session.desktop().type(QStringLiteral("2.4")));
    QVERIFY(session.desktop().key(QStringLiteral("Escape")));
    QTRY_VERIFY(!session.isKeypadOpen());
    QVERIFY(session.main().show());
    QCOMPARE(session.main().count("REQ"), 0);
    QCOMPARE(session.isExpanded(), expanded);
}

void TestQuickEdits::otherEditReplacesKeypad()
{
    BarSession session(m_display, m_accessibility);
    QVERIFY(session.begin());
    QVERIFY(session.expand());
    QVERIFY(session.openKeypad(BarSession::Frequency));
    QVERIFY(session.desktop().type(QStringLiteral("5")));
    QVERIFY(session.clickKey(QStringLiteral("Cancel")));
    QTRY_VERIFY(!session.isKeypadOpen());
    QVERIFY(session.openKeypad(BarSession::Level));
    QVERIFY(session.desktop().type(QStringLiteral("-3")));
    QVERIFY(session.desktop().key(QStringLiteral("Return")));
    QVERIFY(session.main().waitForRequests(1));
    QCOMPARE(session.main().requests().first(), request(1, "SOUR:POW:LEV", "dbm", -3.0));
}

void TestQuickEdits::hidingClosesKeypad()
{
    BarSession session(m_display, m_accessibility);
    QVERIFY(session.begin());
    QVERIFY(session.openKeypad(BarSession::Frequency));
    QVERIFY(session.main().hide());
    QTRY_COMPARE(session.desktop().mappedWindows(session.helper().processId()).size(), 0);
    QVERIFY(session.main().show());
    QCOMPARE(session.desktop().waitForWindows(session.helper().processId(), 1).size(), 1);
    QCOMPARE(session.main().count("REQ"), 0);
}

void TestQuickEdits::assistiveProgramPressesButton()
{
    BarSession session(m_display, m_accessibility);
    QVERIFY(session.begin());
    const auto rf = m_accessibility.waitForNode(session.helper().processId(), QStringLiteral("push button"),
                                                QStringLiteral("RF"));
    QVERIFY(rf);
    QVERIFY(m_accessibility.act(*rf, QStringLiteral("Press")));
    QVERIFY(session.main().waitForRequests(1));
    QCOMPARE(session.main().requests().first(), request(1, "OUTP:STAT", "enabled", true));
}

QTEST_GUILESS_MAIN(TestQuickEdits)

#include "tst_quick_edits.moc"
