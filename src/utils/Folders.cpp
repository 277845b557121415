#include "utils/Folders.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace Utils {

QString besideProgram(const QString& path)
{
    return QDir::cleanPath(QDir(QCoreApplication::applicationDirPath()).absoluteFilePath(path));
}

QString mkdirs(const QString& path)
{
    QString folder = besideProgram(path);
    QDir().mkpath(folder);
    while (!QFileInfo(folder).isDir() && !QDir(folder).isRoot())
        folder = QFileInfo(folder).absolutePath();
    return folder;
}

} // namespace Utils
