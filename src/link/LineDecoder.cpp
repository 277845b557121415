#include "link/LineDecoder.h"

#include <algorithm>
#include <cstring>

#ifdef Q_OS_LINUX
#include <sys/mman.h>
#endif

namespace {

constexpr int smallestStorage = 0x1000;
// Up to here the storage grows by doubling, and this much is kept when all has been handed out.
constexpr int keptStorage = 0x40000;
// Beyond, it is made for the longest line and the reads around it at once, so that nothing is copied again.
constexpr int longestLineStorage = LineDecoder::maximumLineLength + 0x100000;
// Doubling ends here: no byte array is much larger than this.
constexpr int largestStorage = 0x70000000;
// From this length on a line is not copied out: it takes the storage along.
constexpr int givenAwayLength = 0x8000;

// The first touch of fresh memory costs several times the copy into it; large pages make such touches few.
void preferLargePages([[maybe_unused]] QByteArray& storage)
{
#ifdef MADV_HUGEPAGE
    constexpr quintptr page = 0x200000;
    const auto start = reinterpret_cast<quintptr>(storage.data());
    const quintptr begin = (start + page - 1) & ~(page - 1);
    const quintptr end = (start + static_cast<quintptr>(storage.size())) & ~(page - 1);
    if (begin < end)
        madvise(reinterpret_cast<void*>(begin), end - begin, MADV_HUGEPAGE); // advice: may be refused
#endif
}

} // namespace

void LineDecoder::append(const QByteArray& bytes)
{
    if (bytes.isEmpty())
        return;
    std::memcpy(beginWrite(bytes.size()), bytes.constData(), static_cast<std::size_t>(bytes.size()));
    endWrite(bytes.size());
}

char* LineDecoder::beginWrite(int size)
{
    const int pending = m_end - m_read;
    if (m_storage.size() - m_end < size) {
        // The move to the front is paid for by what has been handed out since the last one, or by the growth
        // that follows.
        const bool grow = m_read < pending || m_storage.size() - pending < size;
        if (m_read > 0)
            std::memmove(m_storage.data(), m_storage.constData() + m_read, static_cast<std::size_t>(pending));
        m_scan -= m_read;
        m_read = 0;
        m_end = pending;
        if (grow)
            growTo(pending + size);
    }
    return m_storage.data() + m_end;
}

void LineDecoder::growTo(int needed)
{
    const qint64 doubled = std::min<qint64>(2 * qint64(m_storage.size()), largestStorage);
    int room = std::max({smallestStorage, static_cast<int>(doubled), needed});
    if (room > keptStorage)
        room = std::max(room, longestLineStorage);
    m_storage.reserve(room); // exactly: resize() alone would double it
    m_storage.resize(room);
    if (room > keptStorage)
        preferLargePages(m_storage);
}

void LineDecoder::endWrite(int size)
{
    m_end += size;
}

LineDecoder::Result LineDecoder::next(QByteArray& line)
{
    // A line feed is only of interest where it ends a line of an acceptable length.
    const int limit = std::min(m_end, m_read + maximumLineLength + 1);
    const char* data = m_storage.constData();
    const void* feed =
        m_scan < limit ? std::memchr(data + m_scan, '\n', static_cast<std::size_t>(limit - m_scan)) : nullptr;
    if (feed == nullptr) {
        m_scan = limit;
        return m_end - m_read > maximumLineLength ? Result::Oversized : Result::NeedsMore;
    }
    take(line, static_cast<int>(static_cast<const char*>(feed) - data) - m_read);
    return Result::Line;
}

void LineDecoder::take(QByteArray& line, int length)
{
    const int rest = m_end - m_read - length - 1;
    if (m_read == 0 && length >= givenAwayLength && rest <= length) {
        giveStorage(line, length);
        return;
    }
    if (line.capacity() < length) {
        line = QByteArray();
        line.reserve(length); // a reserved array keeps its memory when it is given a shorter line
    }
    line.resize(length);
    std::memcpy(line.data(), m_storage.constData() + m_read, static_cast<std::size_t>(length));
    m_read += length + 1;
    m_scan = m_read;
    if (m_read == m_end) {
        m_read = m_scan = m_end = 0;
        if (m_storage.size() > keptStorage)
            m_storage.clear();
    }
}

void LineDecoder::giveStorage(QByteArray& line, int length)
{
    const int rest = m_end - length - 1;
    QByteArray given;
    given.swap(m_storage);
    m_read = m_scan = m_end = 0;
    if (rest > 0) {
        std::memcpy(beginWrite(rest), given.constData() + length + 1, static_cast<std::size_t>(rest));
        endWrite(rest);
    }
    given.resize(length);
    if (given.capacity() > 2 * length)
        given.squeeze();
    line.swap(given);
}

void LineDecoder::clear()
{
    m_storage.clear();
    m_read = m_scan = m_end = 0;
}
