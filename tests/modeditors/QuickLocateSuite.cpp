#include "modeditors/QuickFixture.h"
#include "modeditors/QuickSuites.h"

#include <QScrollBar>
#include <QTest>

namespace {

constexpr int files = 60;
const QString farName = QStringLiteral("f50");
const QString farFile = QStringLiteral("w/f50.wav");

} // namespace

// Finding the loaded file.
class QuickLocateSuite final : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_fixture.reset(); }
    void markComesAndGoesWithTheScrollBar();
    void markInAnotherFolder();
    void noMark_data();
    void noMark();
    void hiddenColumn();
    void clickOnTheMarkLocates();
    void clickBesideTheMarkDoesNot();
    void doubleClickLocates_data();
    void doubleClickLocates();
    void locatesInAnotherFolder();
    void nothingToLocate_data();
    void nothingToLocate();

private:
    void openFolder(const QString& loaded, const QString& folder = QStringLiteral("w"));
    [[nodiscard]] bool isInTheMiddle(const QString& name) const;

    std::unique_ptr<QuickFixture> m_fixture;
};

void QuickLocateSuite::init()
{
    m_fixture = std::make_unique<QuickFixture>();
    for (int i = 0; i < files; ++i) {
        m_fixture->addWaveform(QStringLiteral("w/f%1.wav").arg(i, 2, 10, QLatin1Char('0')));
    }
    m_fixture->addWaveform(QStringLiteral("other/x.wav"));
}

void QuickLocateSuite::openFolder(const QString& loaded, const QString& folder)
{
    m_fixture->applyLoaded(loaded, {{QStringLiteral("currentPath"), m_fixture->path(folder)}});
}

bool QuickLocateSuite::isInTheMiddle(const QString& name) const
{
    const QTableWidget& table = m_fixture->table();
    const QRect row = table.visualItemRect(table.item(m_fixture->rowOf(name), 0));
    return qAbs(row.center().y() - table.viewport()->rect().center().y()) <= row.height();
}

void QuickLocateSuite::markComesAndGoesWithTheScrollBar()
{
    openFolder(farFile);
    QScrollBar* const bar = m_fixture->table().verticalScrollBar();
    QCOMPARE(m_fixture->markedSection(), 1);
    bar->setValue(bar->maximum());
    QCOMPARE(m_fixture->markedSection(), -1);
    bar->setValue(0);
    QCOMPARE(m_fixture->markedSection(), 1);
    openFolder(QStringLiteral("w/f00.wav"));
    QCOMPARE(m_fixture->markedSection(), -1);
    QCOMPARE(m_fixture->editor.emitted(), 0);
}

void QuickLocateSuite::markInAnotherFolder()
{
    openFolder(QStringLiteral("other/x.wav"));
    QCOMPARE(m_fixture->markedSection(), 1);
    m_fixture->click(QStringLiteral(".."));
    QCOMPARE(m_fixture->markedSection(), 1);
    m_fixture->click(QStringLiteral("other"));
    QCOMPARE(m_fixture->markedSection(), -1);
}

void QuickLocateSuite::noMark_data()
{
    QTest::addColumn<QString>("loaded");
    QTest::newRow("nothing loaded") << QStringLiteral("");
    QTest::newRow("gone") << QStringLiteral("%1/w/gone.wav");
    QTest::newRow("outside") << QStringLiteral("/etc/hostname");
}

void QuickLocateSuite::noMark()
{
    QFETCH(const QString, loaded);
    const QString path = loaded.contains(QLatin1String("%1")) ? loaded.arg(m_fixture->path()) : loaded;
    m_fixture->apply({{QStringLiteral("loadedFilePath"), path}});
    QCOMPARE(m_fixture->markedSection(), -1);
}

void QuickLocateSuite::hiddenColumn()
{
    openFolder(farFile);
    m_fixture->table().setColumnHidden(1, true);
    openFolder(farFile);
    QCOMPARE(m_fixture->markedSection(), 0);
    m_fixture->clickSection(0);
    QCOMPARE(m_fixture->selected(), farName);
    QCOMPARE(m_fixture->markedSection(), -1);
}

void QuickLocateSuite::clickOnTheMarkLocates()
{
    openFolder(farFile);
    m_fixture->clickSection(1);
    QCOMPARE(m_fixture->selected(), farName);
    QCOMPARE(m_fixture->table().currentRow(), m_fixture->rowOf(farName));
    QVERIFY(isInTheMiddle(farName));
    QCOMPARE(m_fixture->markedSection(), -1);
    QCOMPARE(m_fixture->editor.emitted(), 0);
}

void QuickLocateSuite::clickBesideTheMarkDoesNot()
{
    openFolder(farFile);
    m_fixture->clickSection(0);
    QCOMPARE(m_fixture->selected(), QString());
    QCOMPARE(m_fixture->markedSection(), 1);
    // Without a mark a single click is nothing.
    openFolder(QStringLiteral("w/f00.wav"));
    m_fixture->clickSection(1);
    QCOMPARE(m_fixture->selected(), QString());
}

void QuickLocateSuite::doubleClickLocates_data()
{
    QTest::addColumn<int>("section");
    QTest::addColumn<QString>("name");
    for (const int section : {0, 1}) {
        for (const QString& name : {farName, QStringLiteral("f00")}) {
            QTest::addRow("section %d, %s", section, qPrintable(name)) << section << name;
        }
    }
}

void QuickLocateSuite::doubleClickLocates()
{
    QFETCH(const int, section);
    QFETCH(const QString, name);
    openFolder(QStringLiteral("w/%1.wav").arg(name));
    m_fixture->clickSection(section, true);
    QCOMPARE(m_fixture->selected(), name);
    QCOMPARE(m_fixture->markedSection(), -1);
    QCOMPARE(m_fixture->editor.emitted(), 0);
}

void QuickLocateSuite::locatesInAnotherFolder()
{
    openFolder(farFile, QStringLiteral("other"));
    QCOMPARE(m_fixture->names(), QStringLiteral("..|x"));
    m_fixture->click(QStringLiteral("x"));
    m_fixture->clickSection(1);
    QCOMPARE(m_fixture->table().rowCount(), files + 1);
    QCOMPARE(m_fixture->selected(), farName);
    QVERIFY(isInTheMiddle(farName));
    QCOMPARE(m_fixture->markedSection(), -1);
    QCOMPARE(m_fixture->editor.emitted(), 0);
}

void QuickLocateSuite::nothingToLocate_data()
{
    noMark_data();
}

void QuickLocateSuite::nothingToLocate()
{
    QFETCH(const QString, loaded);
    const QString path = loaded.contains(QLatin1String("%1")) ? loaded.arg(m_fixture->path()) : loaded;
    m_fixture->apply({{QStringLiteral("loadedFilePath"), path}},
                     {{QStringLiteral("currentPath"), m_fixture->path(QStringLiteral("w"))}});
    m_fixture->click(QStringLiteral("f01"));
    for (const int section : {0, 1}) {
        m_fixture->clickSection(section, true);
    }
    QCOMPARE(m_fixture->table().rowCount(), files + 1);
    QCOMPARE(m_fixture->selected(), QStringLiteral("f01"));
}

std::unique_ptr<QObject> makeQuickLocateSuite()
{
    return std::make_unique<QuickLocateSuite>();
}

#include "QuickLocateSuite.moc"
