#include "app/ApplicationFonts.h"

#include "utils/Folders.h"

#include <QDir>
#include <QFileInfo>
#include <QFontDatabase>
#include <QSet>
#include <QStringList>

namespace {

constexpr int mostFolders = 1000; // a link may lead anywhere, to the root of the disk as well
constexpr qint64 largestFont = 64 * qint64(1024) * 1024; // bytes; fonts are read whole

// Opening a pipe or a device through a link would never end.
bool mayBeFont(const QFileInfo& file)
{
    return file.isFile() && file.size() <= largestFont;
}

} // namespace

void loadApplicationFonts()
{
    QStringList waiting = {Utils::besideProgram(QStringLiteral("../fonts/"))};
    QSet<QString> visited;
    while (!waiting.isEmpty() && visited.size() < mostFolders) {
        const QDir folder(waiting.takeFirst());
        const QString place = folder.canonicalPath();
        if (place.isEmpty() || visited.contains(place))
            continue;
        visited.insert(place);
        const auto fonts = folder.entryInfoList({QStringLiteral("*.ttf")}, QDir::Files, QDir::Unsorted);
        for (const QFileInfo& font : fonts)
            if (mayBeFont(font))
                QFontDatabase::addApplicationFont(font.absoluteFilePath());
        const auto folders = folder.entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Unsorted);
        for (const QFileInfo& inner : folders)
            waiting.append(inner.absoluteFilePath());
    }
}
