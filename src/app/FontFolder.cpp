#include "app/FontFolder.h"

#include <QFile>
#include <QFontDatabase>
#include <QSet>
#include <QStringList>

#include <fontconfig/fontconfig.h>

namespace {

QByteArray textOf(const FcPattern* font, const char* property)
{
    FcChar8* text = nullptr;
    if (FcPatternGetString(font, property, 0, &text) != FcResultMatch)
        return {};
    return reinterpret_cast<const char*>(text);
}

} // namespace

bool addFontFolder(const QString& folder, int files)
{
    const QByteArray path = QFile::encodeName(folder);
    if (FcConfigAppFontAddDir(nullptr, reinterpret_cast<const FcChar8*>(path.constData())) == FcFalse)
        return false;
    const FcFontSet* added = FcConfigGetFonts(nullptr, FcSetApplication);
    if (added == nullptr)
        return false;
    const QStringList known = QFontDatabase().families(); // the first to ask has the toolkit ask fontconfig
    QSet<QByteArray> read;
    for (int i = 0; i < added->nfont; ++i) {
        read.insert(textOf(added->fonts[i], FC_FILE));
        if (!known.contains(QString::fromUtf8(textOf(added->fonts[i], FC_FAMILY))))
            return false;
    }
    return read.size() >= files;
}
