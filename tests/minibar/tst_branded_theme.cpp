// The theme functions as a branded build compiles them: with the branding name "acme".
#include "minibar/Theme.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTest>

class TestBrandedTheme : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void noBrandingFolder();
    void brandingFollowsTheTheme();
    void brandingOfTheOtherThemeIsNotTaken();
    void withoutBaseFileNothingIsRead();
    void unreadableBrandingIsSkipped();

private:
    QDir m_configuration;

    void write(const QString& name, const QByteArray& content)
    {
        QFile file(m_configuration.filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
};

void TestBrandedTheme::init()
{
    m_configuration =
        QDir(QDir::cleanPath(QCoreApplication::applicationDirPath() + QStringLiteral("/../configuration")));
    QVERIFY(m_configuration.removeRecursively());
    QVERIFY(m_configuration.mkpath(QStringLiteral("branding/acme")));
    write(QStringLiteral("theme.css"), "dark base");
    write(QStringLiteral("theme_light.css"), "light base");
}

void TestBrandedTheme::noBrandingFolder()
{
    QCOMPARE(brandingStyleSheetPath(true), QString());
    QCOMPARE(loadApplicationStyleSheet(true), QStringLiteral("light base"));
}

void TestBrandedTheme::brandingFollowsTheTheme()
{
    write(QStringLiteral("branding/acme/theme.css"), "dark brand");
    write(QStringLiteral("branding/acme/theme_light.css"), "light brand");
    QCOMPARE(brandingStyleSheetPath(false),
             m_configuration.filePath(QStringLiteral("branding/acme/theme.css")));
    QCOMPARE(brandingStyleSheetPath(true),
             m_configuration.filePath(QStringLiteral("branding/acme/theme_light.css")));
    QCOMPARE(loadApplicationStyleSheet(false), QStringLiteral("dark base\ndark brand"));
    QCOMPARE(loadApplicationStyleSheet(true), QStringLiteral("light base\nlight brand"));
}

void TestBrandedTheme::brandingOfTheOtherThemeIsNotTaken()
{
    write(QStringLiteral("branding/acme/theme.css"), "dark brand");
    QCOMPARE(loadApplicationStyleSheet(true), QStringLiteral("light base"));
}

void TestBrandedTheme::withoutBaseFileNothingIsRead()
{
    write(QStringLiteral("branding/acme/theme.css"), "dark brand");
    QVERIFY(m_configuration.remove(QStringLiteral("theme.css")));
    QCOMPARE(loadApplicationStyleSheet(false), QString());
}

void TestBrandedTheme::unreadableBrandingIsSkipped()
{
    QVERIFY(
        m_configuration.mkpath(QStringLiteral("branding/acme/theme.css"))); // a folder in the file's place
    QCOMPARE(loadApplicationStyleSheet(false), QStringLiteral("dark base"));
}

QTEST_GUILESS_MAIN(TestBrandedTheme)
#include "tst_branded_theme.moc"
