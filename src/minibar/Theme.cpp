#include "minibar/Theme.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QSettings>
#include <optional>

namespace {

const QLatin1String brandingName(TARVINEL_BRANDING);
const QLatin1String officialBranding("official");

QString beside(const QString& relative)
{
    const QDir programFolder(QCoreApplication::applicationDirPath());
    return QDir::cleanPath(programFolder.absoluteFilePath(relative));
}

QLatin1String themeFileName(bool light)
{
    return light ? QLatin1String("theme_light.css") : QLatin1String("theme.css");
}

std::optional<QString> readText(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return std::nullopt;
    return QString::fromUtf8(file.readAll());
}

} // namespace

bool readThemeSetting()
{
    const QSettings settings(beside(QStringLiteral("../configuration/Settings.ini")), QSettings::IniFormat);
    const QString theme = settings.value(QStringLiteral("APP/Theme"), QStringLiteral("Light")).toString();
    return theme.compare(QLatin1String("Dark"), Qt::CaseInsensitive) != 0;
}

QString loadApplicationStyleSheet(bool light)
{
    std::optional<QString> sheet =
        readText(beside(QStringLiteral("../configuration/") + themeFileName(light)));
    if (!sheet)
        return {};
    const QString brandingPath = brandingStyleSheetPath(light);
    if (brandingPath.isEmpty())
        return *sheet;
    if (const std::optional<QString> branding = readText(brandingPath))
        *sheet += QLatin1Char('\n') + *branding;
    return *sheet;
}

QString brandingStyleSheetPath(bool light)
{
    if (brandingName.isEmpty() || brandingName == officialBranding)
        return {};
    const QString path =
        beside(QStringLiteral("../configuration/branding/%1/").arg(brandingName) + themeFileName(light));
    return QFile::exists(path) ? path : QString();
}
