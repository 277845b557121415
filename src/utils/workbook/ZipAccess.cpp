#include "utils/workbook/ZipAccess.h"

#include "utils/workbook/Limits.h"

#include <QIODevice>

#include <array>
#include <minizip/unzip.h>

namespace Workbook {
namespace {

constexpr int asciiCaseInsensitive = 2; // in minizip's numbering

// minizip reads through these; `stream` is the device.

QIODevice& deviceOf(voidpf stream)
{
    return *static_cast<QIODevice*>(stream);
}

voidpf openDevice(voidpf opaque, const void*, int)
{
    return opaque;
}

uLong readDevice(voidpf, voidpf stream, void* buffer, uLong size)
{
    const qint64 count = deviceOf(stream).read(static_cast<char*>(buffer), static_cast<qint64>(size));
    return count > 0 ? static_cast<uLong>(count) : 0;
}

ZPOS64_T tellDevice(voidpf, voidpf stream)
{
    return static_cast<ZPOS64_T>(deviceOf(stream).pos());
}

long seekDevice(voidpf, voidpf stream, ZPOS64_T offset, int origin)
{
    QIODevice& device = deviceOf(stream);
    const qint64 base = origin == ZLIB_FILEFUNC_SEEK_CUR   ? device.pos()
                        : origin == ZLIB_FILEFUNC_SEEK_END ? device.size()
                                                           : 0;
    // Offsets come from the archive: one beyond its end is refused here, before anything can overflow.
    const auto limit = static_cast<ZPOS64_T>(device.size() - base);
    return offset <= limit && device.seek(base + static_cast<qint64>(offset)) ? 0 : -1;
}

int closeDevice(voidpf, voidpf)
{
    return 0; // the device is its owner's
}

int errorDevice(voidpf, voidpf)
{
    return 0; // a read that failed was a short one
}

} // namespace

ZipAccess::ZipAccess(QIODevice& device)
{
    zlib_filefunc64_def functions = {openDevice, readDevice,  nullptr,     tellDevice,
                                     seekDevice, closeDevice, errorDevice, &device};
    m_archive = unzOpen2_64("", &functions);
    unz_global_info64 info = {};
    if (m_archive == nullptr || unzGetGlobalInfo64(m_archive, &info) != UNZ_OK)
        m_problem = QStringLiteral("it is no ZIP archive");
    else if (info.number_entry > Limits::parts)
        m_problem = QStringLiteral("it has more than %1 files in it").arg(Limits::parts);
}

ZipAccess::~ZipAccess()
{
    if (m_archive != nullptr)
        unzClose(m_archive);
}

bool ZipAccess::contains(const QString& name) const
{
    return m_problem.isEmpty() &&
           unzLocateFile(m_archive, name.toUtf8().constData(), asciiCaseInsensitive) == UNZ_OK;
}

QString ZipAccess::read(const QString& name, const std::function<bool(const char*, int)>& take) const
{
    const QString broken = QStringLiteral("\"%1\" in it cannot be unpacked").arg(name);
    if (!contains(name))
        return QStringLiteral("there is no \"%1\" in it").arg(name);
    unz_file_info64 info = {};
    if (unzGetCurrentFileInfo64(m_archive, &info, nullptr, 0, nullptr, 0, nullptr, 0) != UNZ_OK)
        return broken;
    const QString tooLarge = QStringLiteral("\"%1\" in it is larger than 32 MiB").arg(name);
    if (info.uncompressed_size > Limits::partSize)
        return tooLarge;
    const bool known = info.compression_method == 0 || info.compression_method == Z_DEFLATED;
    if (!known || unzOpenCurrentFile(m_archive) != UNZ_OK)
        return broken;

    std::array<char, 64 * 1024> buffer;
    int total = 0;
    int count = 0;
    bool wanted = true;
    while (wanted && total <= Limits::partSize &&
           (count = unzReadCurrentFile(m_archive, buffer.data(), buffer.size())) > 0) {
        total += count;
        wanted = take(buffer.data(), count);
    }
    const bool intact = unzCloseCurrentFile(m_archive) == UNZ_OK; // compares the checksum
    if (!wanted)
        return {};
    if (total > Limits::partSize)
        return tooLarge;
    const bool complete = static_cast<ZPOS64_T>(total) == info.uncompressed_size;
    return intact && count == 0 && complete ? QString() : broken;
}

} // namespace Workbook
