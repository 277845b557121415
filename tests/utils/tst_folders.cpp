#include "utils/Folders.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

class TestFolders final : public QObject
{
    Q_OBJECT

private slots:
    void relativeToTheProgram();
    void madeWithAllAboveIt();
    void nearestOneThatExists();
};

void TestFolders::relativeToTheProgram()
{
    const QString data = Utils::mkdirs(QStringLiteral("../data/"));
    QCOMPARE(data, QDir::cleanPath(QCoreApplication::applicationDirPath() + QStringLiteral("/../data")));
    QVERIFY(QDir(data).exists());
    QCOMPARE(Utils::mkdirs(QStringLiteral("../data/")), data); // once more does no harm
    QVERIFY(QDir().rmdir(data));
}

void TestFolders::madeWithAllAboveIt()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a b/ü/c"));
    QCOMPARE(Utils::mkdirs(path + QLatin1Char('/')), path);
    QVERIFY(QDir(path).exists());
}

void TestFolders::nearestOneThatExists()
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("file")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(Utils::mkdirs(file.fileName() + QStringLiteral("/below/it")), folder.path());
}

QTEST_GUILESS_MAIN(TestFolders)

#include "tst_folders.moc"
