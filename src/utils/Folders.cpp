#include "utils/Folders.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace Utils {

QString mkdirs(const QString& path)
{
    QString folder = QDir::cleanPath(QDir(QCoreApplication::applicationDirPath()).absoluteFilePath(path));
    QDir().mkpath(folder);
    while (!QFileInfo(folder).isDir() && !QDir(folder).isRoot())
        folder = QFileInfo(folder).absolutePath();
    return folder;
}

} // namespace Utils
