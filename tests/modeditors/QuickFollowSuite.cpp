#include "modeditors/QuickFixture.h"
#include "modeditors/QuickSuites.h"
#include "modeditors/WaveformProbe.h"

#include <QDir>
#include <QFile>
#include <QFileSystemWatcher>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

namespace {

constexpr int files = 60;

QString nameOf(int number)
{
    return QStringLiteral("f%1").arg(number, 2, 10, QLatin1Char('0'));
}

} // namespace

// What happens in the folder that is shown, and what happens while nothing happens.
class QuickFollowSuite final : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_fixture = std::make_unique<QuickFixture>(); }
    void cleanup() { m_fixture.reset(); }
    void newFilesAppear();
    void placeIsKept_data();
    void placeIsKept();
    void factsAreKept();
    void replacedFilesAreReadAgain();
    void onlyTheShownFolderIsWatched();
    void vanishedFolderGivesWayToTheOneAbove();
    void probesOneAfterTheOther();
    void probingCanPause();
    void newQueueReplacesTheOld();
    void hiddenEditorRests();
    void nothingTicksAtRest();

private:
    void addFiles()
    {
        for (int i = 0; i < files; ++i) {
            m_fixture->addWaveform(QStringLiteral("w/%1.wav").arg(nameOf(i)), 1000);
        }
    }
    [[nodiscard]] bool ticks() const
    {
        const auto timers = m_fixture->editor.editor().findChildren<QTimer*>();
        return std::any_of(timers.cbegin(), timers.cend(),
                           [](const QTimer* timer) { return timer->isActive(); });
    }

    std::unique_ptr<QuickFixture> m_fixture;
};

void QuickFollowSuite::newFilesAppear()
{
    m_fixture->apply();
    m_fixture->addWaveform(QStringLiteral("b.wav"));
    QTRY_COMPARE(m_fixture->names(), QStringLiteral("b"));
    m_fixture->addWaveform(QStringLiteral("a.wav"));
    m_fixture->addFolder(QStringLiteral("z"));
    QTRY_COMPARE(m_fixture->names(), QStringLiteral("z|a|b"));
    QTRY_COMPARE(m_fixture->facts(QStringLiteral("a")), QStringLiteral("48k / 1s"));
    QVERIFY(QDir().rmdir(m_fixture->path(QStringLiteral("z"))));
    QVERIFY(
        QFile::rename(m_fixture->path(QStringLiteral("a.wav")), m_fixture->path(QStringLiteral("c.wav"))));
    QTRY_COMPARE(m_fixture->names(), QStringLiteral("b|c"));
    QCOMPARE(m_fixture->editor.emitted(), 0);
}

void QuickFollowSuite::placeIsKept_data()
{
    QTest::addColumn<QString>("added");
    QTest::addColumn<QString>("removed");
    QTest::newRow("a file above") << QStringLiteral("w/a.wav") << QStringLiteral("");
    QTest::newRow("a file between") << QStringLiteral("w/f29x.wav") << QStringLiteral("");
    QTest::newRow("a file below") << QStringLiteral("w/z.wav") << QStringLiteral("");
    QTest::newRow("a folder above") << QStringLiteral("w/folder/x.wav") << QStringLiteral("");
    QTest::newRow("without a file above") << QStringLiteral("") << QStringLiteral("w/f03.wav");
    QTest::newRow("without a file below") << QStringLiteral("") << QStringLiteral("w/f59.wav");
}

void QuickFollowSuite::placeIsKept()
{
    QFETCH(const QString, added);
    QFETCH(const QString, removed);
    addFiles();
    m_fixture->applyLoaded(QStringLiteral("w/f31.wav"),
                           {{QStringLiteral("currentPath"), m_fixture->path(QStringLiteral("w"))}});
    QTableWidget& table = m_fixture->table();
    constexpr int somewhere = 1210;
    table.verticalScrollBar()->setValue(somewhere);
    m_fixture->click(nameOf(30));
    const auto place = [&] {
        return table.visualItemRect(table.item(m_fixture->rowOf(nameOf(30)), 0)).top();
    };
    const int before = place();
    const int rows = table.rowCount();
    if (added.isEmpty()) {
        QVERIFY(QFile::remove(m_fixture->path(removed)));
    } else {
        m_fixture->addWaveform(added);
    }
    QTRY_VERIFY(table.rowCount() != rows);
    QCOMPARE(table.rowCount(), added.isEmpty() ? rows - 1 : rows + 1);
    QCOMPARE(m_fixture->selected(), nameOf(30));
    QCOMPARE(table.currentRow(), m_fixture->rowOf(nameOf(30)));
    QCOMPARE(place(), before);
    QVERIFY(m_fixture->icon(m_fixture->rowOf(nameOf(31))).endsWith(QLatin1String("checked.svg")));
}

void QuickFollowSuite::factsAreKept()
{
    m_fixture->addWaveform(QStringLiteral("b.wav"));
    m_fixture->apply();
    QTRY_COMPARE(m_fixture->facts(QStringLiteral("b")), QStringLiteral("48k / 1s"));
    bool lost = false;
    connect(&m_fixture->table(), &QTableWidget::itemChanged, this, [&](const QTableWidgetItem* item) {
        const bool isB = item->column() == 1 && item->row() == m_fixture->table().rowCount() - 1;
        lost = lost || (isB && item->text() == QLatin1String("-"));
    });
    m_fixture->addWaveform(QStringLiteral("a.wav"));
    QTRY_COMPARE(m_fixture->names(), QStringLiteral("a|b"));
    QTRY_COMPARE(m_fixture->facts(QStringLiteral("a")), QStringLiteral("48k / 1s"));
    QVERIFY(!lost);
}

void QuickFollowSuite::replacedFilesAreReadAgain()
{
    m_fixture->addWaveform(QStringLiteral("a.wav"));
    m_fixture->addWaveform(QStringLiteral("later"), 96000);
    m_fixture->apply();
    QTRY_COMPARE(m_fixture->facts(QStringLiteral("a")), QStringLiteral("48k / 1s"));
    QVERIFY(QFile::remove(m_fixture->path(QStringLiteral("a.wav"))));
    QVERIFY(
        QFile::rename(m_fixture->path(QStringLiteral("later")), m_fixture->path(QStringLiteral("a.wav"))));
    QTRY_COMPARE(m_fixture->facts(QStringLiteral("a")), QStringLiteral("96k / 2s"));
}

void QuickFollowSuite::onlyTheShownFolderIsWatched()
{
    m_fixture->addWaveform(QStringLiteral("w/a.wav"));
    const auto* const watcher = m_fixture->editor.editor().findChild<QFileSystemWatcher*>();
    QVERIFY(watcher->directories().isEmpty());
    m_fixture->apply();
    QCOMPARE(watcher->directories(), QStringList(m_fixture->path()));
    m_fixture->click(QStringLiteral("w"));
    QCOMPARE(watcher->directories(), QStringList(m_fixture->path(QStringLiteral("w"))));
    m_fixture->apply({{QStringLiteral("rootPath"), QString()}});
    QVERIFY(watcher->directories().isEmpty());
    QVERIFY(watcher->files().isEmpty());
}

void QuickFollowSuite::vanishedFolderGivesWayToTheOneAbove()
{
    m_fixture->addWaveform(QStringLiteral("a/b/c/deep.wav"));
    m_fixture->addWaveform(QStringLiteral("a/mid.wav"));
    m_fixture->apply({}, {{QStringLiteral("currentPath"), m_fixture->path(QStringLiteral("a/b/c"))}});
    QCOMPARE(m_fixture->names(), QStringLiteral("..|deep"));
    QVERIFY(QDir(m_fixture->path(QStringLiteral("a/b"))).removeRecursively());
    QTRY_COMPARE(m_fixture->names(), QStringLiteral("..|mid"));
    m_fixture->click(QStringLiteral(".."));
    QCOMPARE(m_fixture->names(), QStringLiteral("a"));
}

void QuickFollowSuite::probesOneAfterTheOther()
{
    m_fixture->addWaveform(QStringLiteral("a.wav"));
    WaveformProbe probe;
    QSignalSpy probed(&probe, &WaveformProbe::probed);
    probe.start({m_fixture->path(QStringLiteral("a.wav")), m_fixture->path(QStringLiteral("none.wav"))});
    QCOMPARE(probed.count(), 0);
    QTRY_COMPARE(probed.count(), 2);
    QCOMPARE(probed.at(0).at(0).toString(), m_fixture->path(QStringLiteral("a.wav")));
    QCOMPARE(probed.at(0).at(1).toString(), QStringLiteral("48k / 1s"));
    QCOMPARE(probed.at(1).at(1).toString(), QStringLiteral("-"));
    QVERIFY(!probe.findChild<QTimer*>()->isActive());
}

void QuickFollowSuite::probingCanPause()
{
    WaveformProbe probe;
    const auto* const timer = probe.findChild<QTimer*>();
    QSignalSpy probed(&probe, &WaveformProbe::probed);
    probe.setPaused(true);
    probe.start({QStringLiteral("/none/1"), QStringLiteral("/none/2")});
    QVERIFY(!timer->isActive());
    probe.setPaused(false);
    QVERIFY(timer->isActive());
    QTRY_COMPARE(probed.count(), 1);
    probe.setPaused(true);
    QVERIFY(!timer->isActive());
    probe.setPaused(false);
    QTRY_COMPARE(probed.count(), 2);
    QVERIFY(!timer->isActive());
}

void QuickFollowSuite::newQueueReplacesTheOld()
{
    WaveformProbe probe;
    QSignalSpy probed(&probe, &WaveformProbe::probed);
    probe.start({QStringLiteral("/none/1"), QStringLiteral("/none/2")});
    probe.start({QStringLiteral("/none/3")});
    QTRY_COMPARE(probed.count(), 1);
    QCOMPARE(probed.at(0).at(0).toString(), QStringLiteral("/none/3"));
    probe.start({QStringLiteral("/none/4")});
    probe.stop();
    QVERIFY(!probe.findChild<QTimer*>()->isActive());
}

void QuickFollowSuite::hiddenEditorRests()
{
    addFiles();
    QWidget* const window = m_fixture->editor.editor().window();
    m_fixture->apply({}, {{QStringLiteral("currentPath"), m_fixture->path(QStringLiteral("w"))}});
    window->hide();
    QTRY_VERIFY(!ticks());
    QCOMPARE(m_fixture->facts(nameOf(files - 1)), QStringLiteral("-"));
    m_fixture->addWaveform(QStringLiteral("w/a.wav"));
    window->show();
    QTRY_COMPARE(m_fixture->facts(nameOf(files - 1)), QStringLiteral("1k / 20.833ms"));
    QCOMPARE(m_fixture->facts(QStringLiteral("a")), QStringLiteral("48k / 1s"));
}

void QuickFollowSuite::nothingTicksAtRest()
{
    addFiles();
    QVERIFY(!ticks());
    m_fixture->apply({}, {{QStringLiteral("currentPath"), m_fixture->path(QStringLiteral("w"))}});
    QVERIFY(ticks());
    QTRY_COMPARE(m_fixture->facts(nameOf(files - 1)), QStringLiteral("1k / 20.833ms"));
    QTRY_VERIFY(!ticks());
    m_fixture->addWaveform(QStringLiteral("w/z.wav"));
    QTRY_COMPARE(m_fixture->table().rowCount(), files + 2);
    QTRY_VERIFY(!ticks());
}

std::unique_ptr<QObject> makeQuickFollowSuite()
{
    return std::make_unique<QuickFollowSuite>();
}

#include "QuickFollowSuite.moc"
