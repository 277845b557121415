#include "gallery/Installation.h"

#include "app/ApplicationFonts.h"
#include "app/HelperApplication.h"
#include "app/InterfaceFont.h"
#include "support/Translators.h"
#include "utils/Translator.h"
#include "utils/WavBytes.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFontDatabase>
#include <QLockFile>
#include <QSaveFile>
#include <QSettings>
#include <QTranslator>

namespace Installation {
namespace {

constexpr int samplesOfFile = 30864;
constexpr int bytesOfSample = 4;
constexpr int manyFiles = 24;

QString beside(const QString& relative)
{
    return QDir::cleanPath(QCoreApplication::applicationDirPath() + QStringLiteral("/../") + relative);
}

bool replaceFile(const QString& from, const QString& to)
{
    QFile::remove(to);
    return QFile::copy(from, to);
}

// Whoever else uses the file meanwhile has it whole, and one that is there is not touched.
bool write(const QString& path, const QByteArray& content)
{
    QFile before(path);
    if (before.open(QIODevice::ReadOnly) && before.readAll() == content)
        return true;
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && file.commit();
}

bool linkFolder(const QString& from, const QString& to)
{
    QFile::remove(to);
    return QFile::link(from, to);
}

bool writeSampleFiles(const QString& folder)
{
    const QByteArray content = WavBytes::file(
        WavBytes::fmt() + WavBytes::chunk("data", WavBytes::samples(samplesOfFile * bytesOfSample)));
    QStringList names = {
        QStringLiteral("tone"), QStringLiteral("a recording with a long name, made in the spring campaign"),
        QStringLiteral("third"), QStringLiteral("fourth"), QStringLiteral("campaign/five carriers")};
    for (int i = 1; i <= manyFiles; ++i)
        names.append(QStringLiteral("many/part %1").arg(i, 2, 10, QLatin1Char('0')));
    bool written = QDir().mkpath(folder + QStringLiteral("/campaign")) &&
                   QDir().mkpath(folder + QStringLiteral("/many"));
    for (const QString& name : qAsConst(names))
        written = written && write(folder + QLatin1Char('/') + name + QStringLiteral(".wav"), content);
    return written && write(folder + QStringLiteral("/broken.wav"), "no waveform");
}

// A running program keeps its language; here one follows the other, and Qt has to forget which face it took
// for a character.
void useFonts(const QString& locale)
{
    QFontDatabase::removeAllApplicationFonts();
    loadApplicationFonts();
    useInterfaceFont(locale);
}

} // namespace

const QString doubledLanguage = QStringLiteral("Doubled");

const QStringList& languages()
{
    static const QStringList all = {QStringLiteral("English"),
                                    QStringLiteral("German"),
                                    QStringLiteral("French"),
                                    QStringLiteral("Spanish"),
                                    QStringLiteral("Italian"),
                                    QStringLiteral("Portuguese"),
                                    QStringLiteral("Russian"),
                                    QStringLiteral("Japanese"),
                                    QStringLiteral("Korean"),
                                    QStringLiteral("Simplified Chinese"),
                                    doubledLanguage};
    return all;
}

bool prepare()
{
    static QLockFile inUse(beside(QStringLiteral("gallery.lock")));
    inUse.setStaleLockTime(0);
    if (!inUse.tryLock()) {
        qWarning("The gallery runs already; it has one installation only.");
        return false;
    }
    const QString configuration = beside(QStringLiteral("configuration/"));
    bool laid = QDir().mkpath(configuration);
    for (const char* name : {"theme.css", "theme_light.css"}) {
        laid = laid && replaceFile(QStringLiteral(CONFIGURATION_DIR "/") + QLatin1String(name),
                                   configuration + QLatin1Char('/') + QLatin1String(name));
    }
    return laid && linkFolder(QStringLiteral(TARVINEL_STAGE "/fonts"), beside(QStringLiteral("fonts"))) &&
           writeSampleFiles(sampleFiles());
}

bool setTheme(bool light)
{
    QSettings settings(beside(QStringLiteral("configuration/Settings.ini")), QSettings::IniFormat);
    settings.setValue(QStringLiteral("APP/Theme"), light ? QStringLiteral("Light") : QStringLiteral("Dark"));
    settings.sync();
    return settings.status() == QSettings::NoError;
}

QString sampleFiles()
{
    return QDir::cleanPath(QDir::tempPath() + QStringLiteral("/tarvinel-recordings"));
}

Language::Language(const QString& name)
{
    if (name == doubledLanguage) {
        m_translators.push_back(std::make_unique<TestSupport::DoublingTranslator>());
        QCoreApplication::installTranslator(m_translators.back().get());
        useFonts(QString());
        return;
    }
    auto texts = std::make_unique<Utils::Translator>();
    if (!texts->loadFile(QStringLiteral(TARVINEL_STAGE "/configuration/Language.xlsx"), name))
        qFatal("no texts in %s", qPrintable(name));
    texts->setCurrentLanguage(name);
    QCoreApplication::installTranslator(texts.get());
    m_translators.push_back(std::move(texts));

    const QString locale = HelperApplication::tr("Localization");
    auto qtTexts = std::make_unique<QTranslator>();
    if (!qtTexts->load(QStringLiteral("qt_") + locale, QStringLiteral(TARVINEL_STAGE "/bin/translations")))
        qFatal("no texts of Qt in %s", qPrintable(name));
    QCoreApplication::installTranslator(qtTexts.get());
    m_translators.push_back(std::move(qtTexts));
    useFonts(locale);
}

Language::~Language()
{
    for (const auto& translator : m_translators)
        QCoreApplication::removeTranslator(translator.get());
}

} // namespace Installation
