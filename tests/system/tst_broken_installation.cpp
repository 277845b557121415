// The helper in an installation that is incomplete or spoilt: it starts, serves the bar and says no more than
// it must.

#include "support/HelperProcess.h"
#include "system/BarSession.h"

#include <QFile>
#include <QTest>

#include <sys/stat.h>

using namespace TestSupport;

namespace {

const QString settings = QStringLiteral("configuration/Settings.ini");
const QString table = QStringLiteral("configuration/Language.xlsx");
const QString translations = QStringLiteral("bin/translations");
const QString fonts = QStringLiteral("fonts");
const QString sheets[] = {QStringLiteral("configuration/theme.css"),
                          QStringLiteral("configuration/theme_light.css")};

using Breaking = std::function<bool(const StageCopy&)>;

QByteArray garbage()
{
    QByteArray bytes;
    for (int i = 0; i < 50000; ++i)
        bytes += char(i * i * 31 + i / 7);
    return bytes;
}

// Every way to spoil one entry of the installation.
QVector<QPair<const char*, Breaking>> waysToSpoil(const QString& entry)
{
    return {
        {"missing", [=](const StageCopy& stage) { return stage.remove(entry); }},
        {"a folder in its place", [=](const StageCopy& stage) { return stage.replaceByFolder(entry); }},
        {"a file in its place", [=](const StageCopy& stage) { return stage.replaceByFile(entry, "x"); }},
        {"empty", [=](const StageCopy& stage) { return stage.replaceByFile(entry, {}); }},
        {"garbage", [=](const StageCopy& stage) { return stage.replaceByFile(entry, garbage()); }},
        {"a link to nothing",
         [=](const StageCopy& stage) { return stage.replaceByLink(entry, QStringLiteral("/nonexistent")); }},
        {"a link to itself",
         [=](const StageCopy& stage) {
             return stage.replaceByLink(entry, stage.path() + QLatin1Char('/') + entry);
         }},
        {"what opens and cannot be read",
         [=](const StageCopy& stage) {
             return stage.replaceByLink(entry, QStringLiteral("/proc/self/mem"));
         }},
    };
}

} // namespace

Q_DECLARE_METATYPE(Breaking)

class TestBrokenInstallation final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void servesTheBar_data();
    void servesTheBar();

private:
    PrivateDisplay m_display;
    Accessibility m_accessibility{m_display};
};

void TestBrokenInstallation::initTestCase()
{
    QVERIFY2(m_display.start(), qPrintable(m_display.errorString()));
    QVERIFY2(m_accessibility.start(), qPrintable(m_accessibility.errorString()));
}

void TestBrokenInstallation::servesTheBar_data()
{
    QTest::addColumn<Breaking>("spoil");
    QTest::addColumn<QByteArray>("logged"); // the one sentence that is allowed, empty if none is
    const QByteArray tableNotUsed = "The translation table";
    const QByteArray sheetNotRead = "Could not parse application stylesheet";
    const auto every = [](const char* what, const QString& entry, const QByteArray& logged,
                          const QByteArrayList& silent) {
        const auto ways = waysToSpoil(entry);
        for (const auto& way : ways)
            QTest::addRow("%s: %s", what, way.first)
                << way.second << (silent.contains(way.first) ? QByteArray() : logged);
    };
    const QByteArrayList asIfMissing = {"missing", "a link to nothing", "a link to itself"};
    every("settings", settings, {}, {});
    every("table", table, tableNotUsed, asIfMissing);
    every("toolkit's texts", translations, {}, {});
    every("fonts", fonts, {}, {});
    every("light style sheet", sheets[1], sheetNotRead,
          asIfMissing +
              QByteArrayList{"a folder in its place", "empty", "garbage", "what opens and cannot be read"});
    every("configuration", QStringLiteral("configuration"), {}, {});
    QTest::newRow("dark style sheet, which is not needed: garbage")
        << Breaking([](const StageCopy& stage) { return stage.replaceByFile(sheets[0], garbage()); })
        << QByteArray();
    QTest::newRow("table: cut off") << Breaking([](const StageCopy& stage) {
        QFile whole(stage.path() + QLatin1Char('/') + table);
        return whole.open(QIODevice::ReadOnly) && stage.replaceByFile(table, whole.readAll().chopped(1000));
    }) << tableNotUsed;
    QTest::newRow("table: a pipe") << Breaking([](const StageCopy& stage) {
        return stage.remove(table) &&
               mkfifo(QFile::encodeName(stage.path() + QLatin1Char('/') + table).constData(), 0600) == 0;
    }) << tableNotUsed;
    QTest::newRow("fonts: files that are none") << Breaking([](const StageCopy& stage) {
        return stage.replaceByFolder(fonts) && stage.write(fonts + QStringLiteral("/a.ttf"), garbage()) &&
               stage.write(fonts + QStringLiteral("/b/c.ttf"), {});
    }) << QByteArray();
    QTest::newRow("fonts: a link to the whole disk") << Breaking([](const StageCopy& stage) {
        return stage.replaceByFolder(fonts) &&
               stage.replaceByLink(fonts + QStringLiteral("/disk"), QStringLiteral("/"));
    }) << QByteArray();
    QTest::newRow("the program alone") << Breaking([](const StageCopy& stage) {
        return stage.remove(fonts) && stage.remove(translations) &&
               stage.remove(QStringLiteral("configuration")) && stage.remove(QStringLiteral("data"));
    }) << QByteArray();
}

void TestBrokenInstallation::servesTheBar()
{
    QFETCH(Breaking, spoil);
    QFETCH(QByteArray, logged);
    const StageCopy stage;
    QVERIFY(stage.isValid());
    QVERIFY(spoil(stage));
    BarSession session(m_display, m_accessibility, helperPath(stage.path()));
    QVERIFY2(session.begin(), session.helper().errorOutput().constData());
    session.main().sendSnapshot(txSnapshot(1, true, 2.4e9, -20));
    QTRY_COMPARE(session.shown(BarSession::Frequency), QStringLiteral("2.4GHz"));
    QVERIFY(session.expand());
    QVERIFY(session.click(session.centre(BarSession::Rf)));
    QVERIFY(session.main().waitForRequests(1));
    session.main().sendLine("SHUTDOWN");
    QCOMPARE(session.helper().waitForExitCode(), std::optional<int>(0));

    const QByteArray said = session.helper().errorOutput();
    if (logged.isEmpty()) {
        QCOMPARE(said, QByteArray());
    } else {
        QCOMPARE(said.count('\n'), 1);
        QVERIFY2(said.contains(logged), said.constData());
    }
}

QTEST_GUILESS_MAIN(TestBrokenInstallation)

#include "tst_broken_installation.moc"
