#include "modeditors/QuickFixture.h"
#include "modeditors/QuickSuites.h"
#include "modeditors/WaveformRoot.h"

#include <QDir>
#include <QFile>
#include <QJsonObject>
#include <QTest>

// Nothing outside the root can be reached, and the same root in other words is the same root.
class QuickRootSuite final : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_fixture.reset(); }
    void contains_data();
    void contains();
    void wholeFileSystem();
    void withoutRoot();
    void sameRoot_data();
    void sameRoot();
    void otherRootOpensAnew();
    void linksOutsideAreNotFollowed();
    void linksInsideAreFollowed();
    void fileBecomesFolder();
    void rootDisappearsAndReturns();
    void rootAppearsLater();
    void rootIsTakenAway();

private:
    std::unique_ptr<QuickFixture> m_fixture;
};

void QuickRootSuite::init()
{
    m_fixture = std::make_unique<QuickFixture>();
    m_fixture->addWaveform(QStringLiteral("root/in/a.wav"));
    m_fixture->addWaveform(QStringLiteral("root/top.wav"));
    m_fixture->addWaveform(QStringLiteral("rootlike/b.wav"));
    m_fixture->addWaveform(QStringLiteral("out/secret.wav"));
}

void QuickRootSuite::contains_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("inside");
    QTest::newRow("root") << QStringLiteral("root") << true;
    QTest::newRow("root with a separator") << QStringLiteral("root/") << true;
    QTest::newRow("folder") << QStringLiteral("root/in") << true;
    QTest::newRow("file") << QStringLiteral("root/in/a.wav") << true;
    QTest::newRow("out and in again") << QStringLiteral("root/in/../top.wav") << true;
    QTest::newRow("above") << QStringLiteral("root/..") << false;
    QTest::newRow("out through a folder") << QStringLiteral("root/in/../../out/secret.wav") << false;
    QTest::newRow("name begins alike") << QStringLiteral("rootlike") << false;
    QTest::newRow("file below a name that begins alike") << QStringLiteral("rootlike/b.wav") << false;
    QTest::newRow("link outside") << QStringLiteral("root/escape") << false;
    QTest::newRow("file behind a link outside") << QStringLiteral("root/escape/secret.wav") << false;
    QTest::newRow("link inside") << QStringLiteral("out/back/a.wav") << true;
    QTest::newRow("gone") << QStringLiteral("root/gone.wav") << false;
}

void QuickRootSuite::contains()
{
    QFETCH(const QString, path);
    QFETCH(const bool, inside);
    QVERIFY(
        QFile::link(m_fixture->path(QStringLiteral("out")), m_fixture->path(QStringLiteral("root/escape"))));
    QVERIFY(
        QFile::link(m_fixture->path(QStringLiteral("root/in")), m_fixture->path(QStringLiteral("out/back"))));
    WaveformRoot root;
    QVERIFY(root.change(m_fixture->path(QStringLiteral("root"))));
    QCOMPARE(root.contains(m_fixture->path() + QLatin1Char('/') + path), inside);
}

void QuickRootSuite::wholeFileSystem()
{
    WaveformRoot root;
    QVERIFY(root.change(QStringLiteral("/")));
    QVERIFY(root.contains(QStringLiteral("/")));
    QVERIFY(root.contains(m_fixture->path()));
    QVERIFY(!root.contains(QString()));
}

void QuickRootSuite::withoutRoot()
{
    WaveformRoot root;
    QVERIFY(!root.change(QString()));
    QVERIFY(!root.contains(m_fixture->path()));
    QVERIFY(!root.contains(QString()));
    QVERIFY(!root.contains(QStringLiteral(".")));
    m_fixture->apply({{QStringLiteral("rootPath"), QString()}},
                     {{QStringLiteral("currentPath"), m_fixture->path()}});
    QCOMPARE(m_fixture->names(), QString());
}

void QuickRootSuite::sameRoot_data()
{
    QTest::addColumn<QString>("spelling"); // %1: the folder above the root
    QTest::newRow("equal") << QStringLiteral("%1/root");
    QTest::newRow("separator at the end") << QStringLiteral("%1/root/");
    QTest::newRow("several separators") << QStringLiteral("%1//root///");
    QTest::newRow("other separators") << QStringLiteral("%2\\root");
    QTest::newRow("letter case") << QStringLiteral("%1/ROOT");
    QTest::newRow("letter case and separator") << QStringLiteral("%1/Root/");
    QTest::newRow("not clean") << QStringLiteral("%1/out/../root/.");
    QTest::newRow("through a link") << QStringLiteral("%1/link");
}

void QuickRootSuite::sameRoot()
{
    QFETCH(QString, spelling);
    spelling.replace(QLatin1String("%1"), m_fixture->path());
    spelling.replace(QLatin1String("%2"), m_fixture->path().replace(QLatin1Char('/'), QLatin1Char('\\')));
    QVERIFY(QFile::link(m_fixture->path(QStringLiteral("root")), m_fixture->path(QStringLiteral("link"))));
    const auto apply = [&](const QString& root) { m_fixture->apply({{QStringLiteral("rootPath"), root}}); };
    apply(m_fixture->path(QStringLiteral("root")));
    QCOMPARE(m_fixture->names(), QStringLiteral("in|top"));
    m_fixture->click(QStringLiteral("in"));
    m_fixture->click(QStringLiteral("a"));
    for (int i = 0; i < 2; ++i) {
        apply(spelling);
        QCOMPARE(m_fixture->names(), QStringLiteral("..|a"));
        QCOMPARE(m_fixture->selected(), QStringLiteral("a"));
    }
    apply(m_fixture->path(QStringLiteral("root")));
    QCOMPARE(m_fixture->names(), QStringLiteral("..|a"));
}

void QuickRootSuite::otherRootOpensAnew()
{
    const auto apply = [&](const char* root, const char* folder) {
        m_fixture->apply({{QStringLiteral("rootPath"), m_fixture->path(QLatin1String(root))}},
                         {{QStringLiteral("currentPath"), m_fixture->path(QLatin1String(folder))}});
    };
    apply("root", "root/in");
    QCOMPARE(m_fixture->names(), QStringLiteral("..|a"));
    apply("out", "root/in");
    QCOMPARE(m_fixture->names(), QStringLiteral("secret"));
    apply("root", "root/in");
    QCOMPARE(m_fixture->names(), QStringLiteral("..|a"));
    apply("root/in", "root/in");
    QCOMPARE(m_fixture->names(), QStringLiteral("a"));
    QCOMPARE(m_fixture->editor.emitted(), 0);
}

void QuickRootSuite::linksOutsideAreNotFollowed()
{
    QVERIFY(
        QFile::link(m_fixture->path(QStringLiteral("out")), m_fixture->path(QStringLiteral("root/escape"))));
    QVERIFY(QFile::link(m_fixture->path(QStringLiteral("out/secret.wav")),
                        m_fixture->path(QStringLiteral("root/x.wav"))));
    m_fixture->apply({{QStringLiteral("rootPath"), m_fixture->path(QStringLiteral("root"))}});
    const QString names = QStringLiteral("escape|in|top|x");
    QCOMPARE(m_fixture->names(), names);
    m_fixture->click(QStringLiteral("escape"));
    QCOMPARE(m_fixture->names(), names);
    m_fixture->doubleClick(QStringLiteral("escape"));
    QCOMPARE(m_fixture->names(), names);
    m_fixture->click(QStringLiteral("x"));
    m_fixture->editor.click(QStringLiteral("btnLoad"));
    m_fixture->doubleClick(QStringLiteral("x"));
    QCOMPARE(m_fixture->editor.emitted(), 0);
    // The folder that is shown becomes such a link.
    m_fixture->click(QStringLiteral("in"));
    QVERIFY(QDir(m_fixture->path(QStringLiteral("root/in"))).removeRecursively());
    QVERIFY(QFile::link(m_fixture->path(QStringLiteral("out")), m_fixture->path(QStringLiteral("root/in"))));
    QTRY_COMPARE(m_fixture->names(), names);
}

void QuickRootSuite::linksInsideAreFollowed()
{
    QVERIFY(QFile::link(m_fixture->path(QStringLiteral("root/in")),
                        m_fixture->path(QStringLiteral("root/link"))));
    m_fixture->apply({{QStringLiteral("rootPath"), m_fixture->path(QStringLiteral("root"))}});
    m_fixture->click(QStringLiteral("link"));
    QCOMPARE(m_fixture->names(), QStringLiteral("..|a"));
    m_fixture->click(QStringLiteral(".."));
    QCOMPARE(m_fixture->names(), QStringLiteral("in|link|top"));
}

void QuickRootSuite::fileBecomesFolder()
{
    m_fixture->apply({{QStringLiteral("rootPath"), m_fixture->path(QStringLiteral("root"))}});
    m_fixture->click(QStringLiteral("top"));
    QVERIFY(QFile::remove(m_fixture->path(QStringLiteral("root/top.wav"))));
    m_fixture->addWaveform(QStringLiteral("root/top.wav/new.wav"));
    // Before the table knows.
    QCOMPARE(m_fixture->selected(), QStringLiteral("top"));
    m_fixture->editor.click(QStringLiteral("btnLoad"));
    QCOMPARE(m_fixture->editor.emitted(), 0);
    m_fixture->doubleClick(QStringLiteral("top"));
    QCOMPARE(m_fixture->names(), QStringLiteral("..|new"));
    QCOMPARE(m_fixture->editor.emitted(), 0);
    m_fixture->click(QStringLiteral(".."));
    QCOMPARE(m_fixture->names(), QStringLiteral("in|top.wav"));
}

void QuickRootSuite::rootDisappearsAndReturns()
{
    const QJsonObject profile = {{QStringLiteral("rootPath"), m_fixture->path(QStringLiteral("root"))}};
    m_fixture->apply(profile);
    m_fixture->click(QStringLiteral("in"));
    QVERIFY(QDir().rename(m_fixture->path(QStringLiteral("root")), m_fixture->path(QStringLiteral("away"))));
    m_fixture->apply(profile);
    m_fixture->click(QStringLiteral("a"));
    m_fixture->editor.click(QStringLiteral("btnLoad"));
    m_fixture->doubleClick(QStringLiteral("a"));
    m_fixture->click(QStringLiteral(".."));
    QCOMPARE(m_fixture->editor.emitted(), 0);
    QVERIFY(QDir().rename(m_fixture->path(QStringLiteral("away")), m_fixture->path(QStringLiteral("root"))));
    QVERIFY(QDir(m_fixture->path(QStringLiteral("root"))).removeRecursively());
    QTRY_COMPARE(m_fixture->names(), QString());
    m_fixture->apply(profile);
    QCOMPARE(m_fixture->names(), QString());
    m_fixture->addWaveform(QStringLiteral("root/again.wav"));
    m_fixture->apply(profile);
    QCOMPARE(m_fixture->names(), QStringLiteral("again"));
}

void QuickRootSuite::rootAppearsLater()
{
    const QJsonObject profile = {{QStringLiteral("rootPath"), m_fixture->path(QStringLiteral("later"))}};
    m_fixture->apply(profile);
    QCOMPARE(m_fixture->names(), QString());
    m_fixture->addWaveform(QStringLiteral("later/a.wav"));
    m_fixture->apply(profile);
    QCOMPARE(m_fixture->names(), QStringLiteral("a"));
}

void QuickRootSuite::rootIsTakenAway()
{
    m_fixture->apply({{QStringLiteral("rootPath"), m_fixture->path(QStringLiteral("root"))}});
    m_fixture->apply({{QStringLiteral("rootPath"), QString()}});
    QCOMPARE(m_fixture->names(), QString());
}

std::unique_ptr<QObject> makeQuickRootSuite()
{
    return std::make_unique<QuickRootSuite>();
}

#include "QuickRootSuite.moc"
