#include "app/HelperApplication.h"
#include "controls/ThemeManager.h"

#include <QApplication>
#include <QCursor>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QSettings>
#include <QTest>
#include <QTimer>
#include <functional>

using Controls::ThemeManager;

namespace {

// Does something with the next message, once it has the keyboard.
class BoxVisitor final : public QTimer
{
public:
    explicit BoxVisitor(std::function<void(QMessageBox*)> act)
    {
        connect(this, &QTimer::timeout, this, [this, act = std::move(act)] {
            auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (box && box->isActiveWindow()) {
                stop();
                text = box->text();
                act(box);
            }
        });
        start(0);
    }
    QString text; // of the message that was met
};

} // namespace

// What is told to those who start the program by hand.
class LaunchMessageTest final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup() { qApp->setStyleSheet(QString()); }
    void hasTheSavedTheme_data();
    void hasTheSavedTheme();
    void withoutInstallation();

private:
    QDir m_configuration;
};

void LaunchMessageTest::initTestCase()
{
    // The toolkit asks what lies under the pointer when a modal window closes, and complains when it is one
    // that the window manager is taking away.
    QCursor::setPos(QGuiApplication::primaryScreen()->geometry().bottomRight());
    m_configuration =
        QDir::cleanPath(QCoreApplication::applicationDirPath() + QStringLiteral("/../configuration"));
    QVERIFY(m_configuration.removeRecursively());
    QVERIFY(m_configuration.mkpath(QStringLiteral(".")));
    for (const char* sheet : {"theme.css", "theme_light.css"})
        QVERIFY(QFile::copy(QStringLiteral(CONFIGURATION_DIR "/") + QLatin1String(sheet),
                            m_configuration.filePath(QLatin1String(sheet))));
}

void LaunchMessageTest::hasTheSavedTheme_data()
{
    QTest::addColumn<QString>("saved");
    QTest::addColumn<int>("theme");
    QTest::newRow("light") << QStringLiteral("Light") << int(ThemeManager::Light);
    QTest::newRow("dark") << QStringLiteral("Dark") << int(ThemeManager::Dark);
}

void LaunchMessageTest::hasTheSavedTheme()
{
    QFETCH(const QString, saved);
    QFETCH(const int, theme);
    QSettings(m_configuration.filePath(QStringLiteral("Settings.ini")), QSettings::IniFormat)
        .setValue(QStringLiteral("APP/Theme"), saved);
    QColor background;
    int height = 0;
    const BoxVisitor visitor([&](QMessageBox* box) {
        background = box->grab().toImage().pixelColor(2, 2);
        height = box->button(QMessageBox::Ok)->height();
        QTest::mouseClick(box->button(QMessageBox::Ok), Qt::LeftButton);
    });
    HelperApplication::tellHowItIsStarted();
    QCOMPARE(visitor.text, QStringLiteral("TarvinelMiniBar is started automatically by Tarvinel."));
    QCOMPARE(background, ThemeManager::color(ThemeManager::Surface, ThemeManager::Theme(theme)));
    QVERIFY(height >= 44);
}

void LaunchMessageTest::withoutInstallation()
{
    QVERIFY(m_configuration.removeRecursively());
    const BoxVisitor visitor([](QMessageBox* box) { QTest::keyClick(box, Qt::Key_Return); });
    HelperApplication::tellHowItIsStarted();
    QVERIFY(!visitor.text.isEmpty());
}

QTEST_MAIN(LaunchMessageTest)

#include "tst_launch_message.moc"
