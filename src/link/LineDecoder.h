#pragma once

#include <QByteArray>

// Cuts a byte stream into lines. Each byte is looked at once, however the stream is chunked: a read position
// marks what has been handed out, a scan position what is known to hold no line feed.
class LineDecoder final
{
public:
    // The longest line, in bytes without its line feed, that is accepted.
    static constexpr int maximumLineLength = 0x1000000;

    enum class Result {
        Line,      // a line was taken
        NeedsMore, // no complete line yet
        Oversized  // the line is, or is bound to be, longer than maximumLineLength
    };

    void append(const QByteArray& bytes);
    // Takes the next line, without its line feed, into `line`. A line handed to the next call again lends its
    // memory to it.
    [[nodiscard]] Result next(QByteArray& line);
    // Forgets everything received.
    void clear();

    // Received without a copy: room for `size` more bytes, valid until the next call of another function.
    [[nodiscard]] char* beginWrite(int size);
    // Tells how many bytes were written into that room, from its start.
    void endWrite(int size);
    // Bytes received and not handed out yet.
    [[nodiscard]] int bufferedBytes() const { return m_end - m_read; }

private:
    void growTo(int needed);
    void take(QByteArray& line, int length);
    void giveStorage(QByteArray& line, int length);

    QByteArray m_storage; // its size is the room there is
    int m_read = 0;       // all positions count from the start of the storage
    int m_scan = 0;       // no line feed in [m_read, m_scan)
    int m_end = 0;
};
