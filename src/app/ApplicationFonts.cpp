#include "app/ApplicationFonts.h"

#include "app/FontFolder.h"
#include "utils/Folders.h"

#include <QDir>
#include <QFileInfo>
#include <QFontDatabase>
#include <QSet>
#include <QStringList>

namespace {

constexpr int mostFolders = 1000; // a link may lead anywhere, to the root of the disk as well
constexpr qint64 largestFont = 64 * qint64(1024) * 1024; // bytes; fonts are read whole

struct FoundFonts
{
    QStringList files;
    bool nothingElse = true; // no other files, no folder that is reached in two ways, none left out
};

// Opening a pipe or a device through a link would never end.
bool mayBeFont(const QFileInfo& file)
{
    return file.isFile() && file.size() <= largestFont &&
           file.fileName().endsWith(QLatin1String(".ttf"), Qt::CaseInsensitive);
}

FoundFonts findFonts(const QString& root)
{
    FoundFonts found;
    QStringList waiting = {root};
    QSet<QString> visited;
    while (!waiting.isEmpty() && visited.size() < mostFolders) {
        const QDir folder(waiting.takeFirst());
        const QString place = folder.canonicalPath();
        if (place.isEmpty() || visited.contains(place)) {
            found.nothingElse = false;
            continue;
        }
        visited.insert(place);
        const auto entries =
            folder.entryInfoList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot, QDir::Unsorted);
        for (const QFileInfo& entry : entries) {
            if (entry.isDir())
                waiting.append(entry.absoluteFilePath());
            else if (mayBeFont(entry))
                found.files.append(entry.absoluteFilePath());
            else
                found.nothingElse = false;
        }
    }
    found.nothingElse = found.nothingElse && waiting.isEmpty();
    return found;
}

} // namespace

void loadApplicationFonts()
{
    const QString root = Utils::besideProgram(QStringLiteral("../fonts/"));
    const FoundFonts fonts = findFonts(root);
    if (fonts.files.isEmpty() || (fonts.nothingElse && addFontFolder(root, fonts.files.size())))
        return;
    const QFontDatabase filled; // or else each font is read twice: now, and when the first text fills it
    for (const QString& file : fonts.files)
        QFontDatabase::addApplicationFont(file);
}
