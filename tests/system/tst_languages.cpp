// The real helper in the languages of its settings: its own texts come from the table beside it, the
// toolkit's from the toolkit's files.

#include "support/HelperProcess.h"
#include "system/BarSession.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTest>
#include <QTranslator>

using namespace TestSupport;

namespace {

const QString startedByHand = QStringLiteral("TarvinelMiniBar is started automatically by Tarvinel.");

QString button()
{
    return QStringLiteral("push button");
}

QByteArray settingsFor(const QString& language)
{
    return "[APP]\nLanguage=" + language.toUtf8() + "\nTheme=Light\n";
}

// Lays a table of these lines into the stage, made as the build makes it.
bool writeTable(const StageCopy& stage, const QByteArray& lines)
{
    const QString text = stage.path() + QStringLiteral("/table.tsv");
    QFile file(text);
    if (!file.open(QIODevice::WriteOnly) || file.write(lines) != lines.size())
        return false;
    file.close();
    return QProcess::execute(QStringLiteral(MAKE_TRANSLATION_TABLE),
                             {text, stage.path() + QStringLiteral("/configuration/Language.xlsx")}) == 0;
}

// The cells of the table that is delivered, escapes left as they are: none of those looked at has any.
QVector<QStringList> deliveredTable()
{
    QVector<QStringList> rows;
    QFile file(QStringLiteral(LANGUAGE_TABLE));
    if (file.open(QIODevice::ReadOnly))
        while (!file.atEnd())
            rows.append(QString::fromUtf8(file.readLine().chopped(1)).split(QLatin1Char('\t')));
    return rows;
}

// What the delivered table has for a text in a column, as the helper has to find it.
QString delivered(const QVector<QStringList>& table, const char* context, const QString& source, int column)
{
    QString text = source;
    for (const QStringList& row : table) {
        if (row[1] != source || row[column].isEmpty())
            continue;
        if (row[0] == QLatin1String(context))
            return row[column];
        if (row[0].isEmpty())
            text = row[column];
    }
    return text;
}

// A snapshot with one item whose editor chooses a file.
QJsonObject playbackSnapshot()
{
    QJsonObject snapshot = txSnapshot(1, false, 1e9, -20);
    const QJsonObject item{{QStringLiteral("id"), QStringLiteral("b1")},
                           {QStringLiteral("name"), QStringLiteral("playback")},
                           {QStringLiteral("text"), QStringLiteral("playback")},
                           {QStringLiteral("editorKind"), QStringLiteral("playback")},
                           {QStringLiteral("revision"), 3},
                           {QStringLiteral("editorState"), QJsonObject()}};
    snapshot.insert(QStringLiteral("mod"), QJsonObject{{QStringLiteral("enabled"), false},
                                                       {QStringLiteral("enabledBusinessId"), QString()},
                                                       {QStringLiteral("businesses"), QJsonArray{item}}});
    return snapshot;
}

} // namespace

class TestLanguages final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void startedByHandIn_data();
    void startedByHandIn();
    void barInGerman();
    void toolkitInGerman();
    void everyDeliveredLanguage_data();
    void everyDeliveredLanguage();

private:
    // The helper of this stage, started by hand, shows the box with this text and this button.
    void seeBox(const StageCopy& stage, const QString& text, const QString& button) const;

    PrivateDisplay m_display;
    Accessibility m_accessibility{m_display};
};

void TestLanguages::initTestCase()
{
    QVERIFY2(m_display.start(), qPrintable(m_display.errorString()));
    QVERIFY2(m_accessibility.start(), qPrintable(m_accessibility.errorString()));
}

void TestLanguages::seeBox(const StageCopy& stage, const QString& text, const QString& buttonText) const
{
    HelperProcess helper(m_accessibility.environment(), helperPath(stage.path()));
    QVERIFY(helper.start({}));
    const auto label = m_accessibility.waitForNode(helper.processId(), QStringLiteral("label"), text);
    const auto tree = m_accessibility.application(helper.processId());
    QVERIFY2(label, tree ? QJsonDocument(toJson(*tree)).toJson().constData() : "no tree");
    const auto ok = m_accessibility.waitForNode(helper.processId(), button(), buttonText);
    QVERIFY2(ok, tree ? QJsonDocument(toJson(*tree)).toJson().constData() : "no tree");
    QVERIFY(m_accessibility.act(*ok, QStringLiteral("Press")));
    QCOMPARE(helper.waitForExitCode(), std::optional<int>(1));
    QCOMPARE(helper.errorOutput(), QByteArray());
}

void TestLanguages::startedByHandIn_data()
{
    QTest::addColumn<QByteArray>("settings");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("button");
    const auto test = [](const char* name, const QByteArray& settings, const QString& text, const char* ok) {
        QTest::newRow(name) << settings << text << QString::fromUtf8(ok);
    };
    test("English", settingsFor(QStringLiteral("English")), QStringLiteral("It is started by itself."), "OK");
    test("no language", "[APP]\nTheme=Dark\n", QStringLiteral("It is started by itself."), "OK");
    test("German", settingsFor(QStringLiteral("German")),
         QStringLiteral("Es wird von selbst gestartet: äöüß."), "OK");
    test("Spanish", settingsFor(QStringLiteral("Spanish")), QStringLiteral("Se inicia por sí mismo."),
         "Aceptar");
    test("Simplified Chinese", settingsFor(QStringLiteral("Simplified Chinese")),
         QStringLiteral("它会自动启动。"), "确定");
    test("a text without translation", settingsFor(QStringLiteral("Korean")), startedByHand, "확인");
    test("an unknown language", settingsFor(QStringLiteral("Elvish")), startedByHand, "OK");
}

void TestLanguages::startedByHandIn()
{
    QFETCH(QByteArray, settings);
    QFETCH(QString, text);
    QFETCH(QString, button);
    const StageCopy stage;
    QVERIFY(stage.isValid() && stage.write(QStringLiteral("configuration/Settings.ini"), settings));
    QVERIFY(writeTable(
        stage, "Context\tSource\tEnglish\tGerman\tSpanish\tKorean\tSimplified Chinese\n"
               "\tLocalization\ten\tde\tes\tko\tzh_CN\n"
               "HelperApplication\t" +
                   startedByHand.toUtf8() +
                   "\tIt is started by itself.\tEs wird von selbst gestartet: äöüß.\tSe inicia por sí "
                   "mismo.\t\t它会自动启动。\n"));
    seeBox(stage, text, button);
}

void TestLanguages::barInGerman()
{
    const StageCopy stage;
    QVERIFY(stage.isValid() &&
            stage.write(QStringLiteral("configuration/Settings.ini"), settingsFor(QStringLiteral("German"))));
    QVERIFY(writeTable(stage, "Context\tSource\tGerman\n\tLocalization\tde\n"
                              "RemoteMiniBarWindow\tFrequency\tFrequenz\n\tOFF\tAUS\n\tON\tEIN\n"));
    BarSession session(m_display, m_accessibility, helperPath(stage.path()));
    QVERIFY(session.begin());
    session.main().sendSnapshot(txSnapshot(1, true, 2.4e9, -20));
    const auto frequency =
        m_accessibility.waitForNode(session.helper().processId(), button(), QStringLiteral("Frequenz"));
    QVERIFY(frequency);
    QTRY_COMPARE(session.valueOf(QStringLiteral("Frequenz")),
                 QStringLiteral("2.4GHz")); // numbers have no language
    QTRY_COMPARE(session.valueOf(QStringLiteral("RF")), QStringLiteral("EIN"));
    QCOMPARE(session.helper().errorOutput(), QByteArray());
}

// The box has no button of the toolkit that German spells in its own way; the choice of a file has.
void TestLanguages::toolkitInGerman()
{
    const StageCopy stage;
    QVERIFY(stage.isValid() &&
            stage.write(QStringLiteral("configuration/Settings.ini"), settingsFor(QStringLiteral("German"))));
    QVERIFY(writeTable(stage, "Context\tSource\tGerman\n\tLocalization\tde\n"));
    BarSession session(m_display, m_accessibility, helperPath(stage.path()));
    QVERIFY(session.begin());
    const qint64 helper = session.helper().processId();
    session.main().sendSnapshot(playbackSnapshot());
    QVERIFY(session.expand());
    QVERIFY(session.main().show());
    QVERIFY(session.click(session.centre(BarSession::Mod)));
    QVERIFY(!session.desktop().waitForWindows(helper, 2).isEmpty());
    QVERIFY(session.desktop().key(QStringLiteral("Down")) && session.desktop().key(QStringLiteral("Return")));
    const auto load = m_accessibility.waitForNode(helper, button(), QStringLiteral("Load"));
    QVERIFY(load);
    QVERIFY(session.click(load->extents.center()));
    QVERIFY(m_accessibility.waitForNode(helper, button(), QStringLiteral("Abbrechen")));
}

void TestLanguages::everyDeliveredLanguage_data()
{
    QTest::addColumn<int>("column");
    const QVector<QStringList> table = deliveredTable();
    QVERIFY(table.size() > 1);
    const QStringList expected = {QStringLiteral("English"), QStringLiteral("German"),
                                  QStringLiteral("French"),  QStringLiteral("Spanish"),
                                  QStringLiteral("Italian"), QStringLiteral("Portuguese"),
                                  QStringLiteral("Russian"), QStringLiteral("Japanese"),
                                  QStringLiteral("Korean"),  QStringLiteral("Simplified Chinese")};
    QCOMPARE(table.first().mid(2), expected);
    for (int column = 2; column < table.first().size(); ++column)
        QTest::newRow(qPrintable(table.first()[column])) << column;
}

// With the table and the toolkit's files as they lie in the stage.
void TestLanguages::everyDeliveredLanguage()
{
    QFETCH(int, column);
    const QVector<QStringList> table = deliveredTable();
    const QString locale = delivered(table, "HelperApplication", QStringLiteral("Localization"), column);
    const StageCopy stage;
    QVERIFY(stage.isValid());
    QVERIFY2(QFile::exists(stage.path() + QStringLiteral("/bin/translations/qt_%1.qm").arg(locale)),
             qPrintable(locale));
    QVERIFY(stage.write(QStringLiteral("configuration/Settings.ini"), settingsFor(table.first()[column])));

    QTranslator toolkit; // English has none of its own
    QVERIFY(toolkit.load(QStringLiteral("qt_") + locale, QStringLiteral(QT_TRANSLATIONS)));
    QString ok = toolkit.translate("QPlatformTheme", "OK");
    seeBox(stage, delivered(table, "HelperApplication", startedByHand, column),
           ok.isEmpty() ? QStringLiteral("OK") : ok.remove(QLatin1Char('&')));
}

QTEST_GUILESS_MAIN(TestLanguages)

#include "tst_languages.moc"
