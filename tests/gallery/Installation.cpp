#include "gallery/Installation.h"

#include "support/Translators.h"
#include "utils/WavBytes.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFontDatabase>
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

bool write(const QString& path, const QByteArray& content)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

void loadFonts()
{
    QDirIterator fonts(QStringLiteral(TARVINEL_STAGE "/fonts"), {QStringLiteral("*.ttf")}, QDir::Files,
                       QDirIterator::Subdirectories);
    while (fonts.hasNext())
        QFontDatabase::addApplicationFont(fonts.next());
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
    const QString configuration = beside(QStringLiteral("configuration/"));
    bool laid = QDir().mkpath(configuration);
    for (const char* name : {"theme.css", "theme_light.css"}) {
        laid = laid && replaceFile(QStringLiteral(CONFIGURATION_DIR "/") + QLatin1String(name),
                                   configuration + QLatin1Char('/') + QLatin1String(name));
    }
    loadFonts();
    return laid && writeSampleFiles(sampleFiles());
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
    return beside(QStringLiteral("recordings"));
}

Language::Language(const QString& name)
{
    if (name == doubledLanguage)
        m_translators.push_back(std::make_unique<TestSupport::DoublingTranslator>());
    for (const auto& translator : m_translators)
        QCoreApplication::installTranslator(translator.get());
}

Language::~Language()
{
    for (const auto& translator : m_translators)
        QCoreApplication::removeTranslator(translator.get());
}

} // namespace Installation
