#include "formeditors/WavFileChoice.h"

#include "controls/OpenPath.h"
#include "utils/Folders.h"

QString chooseWavFile(const QString& caption, const QString& filter, QWidget* panel)
{
    const QString folder = Utils::mkdirs(QStringLiteral("../data/"));
    return Controls::getOpenPath(folder, false, caption, filter, panel, {});
}
