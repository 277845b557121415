#include "link/LineDecoder.h"
#include "link/LinkSuites.h"

#include <QRandomGenerator>
#include <QTest>

#include <cstring>

using Result = LineDecoder::Result;

namespace {

constexpr int limit = 16777216;

void feed(LineDecoder& decoder, const QByteArray& bytes)
{
    decoder.append(bytes);
}

void feedInPlace(LineDecoder& decoder, const QByteArray& bytes)
{
    // More room than is used, as for a read that gives less than was asked for.
    char* room = decoder.beginWrite(bytes.size() + 100);
    std::memcpy(room, bytes.constData(), static_cast<std::size_t>(bytes.size()));
    decoder.endWrite(bytes.size());
}

// What the decoder gives until it needs more.
QList<QByteArray> takeAll(LineDecoder& decoder, QByteArray& line)
{
    QList<QByteArray> lines;
    while (decoder.next(line) == Result::Line)
        lines.append(line);
    return lines;
}

QByteArray joined(const QList<QByteArray>& lines)
{
    QByteArray stream;
    for (const QByteArray& line : lines)
        stream.append(line).append('\n');
    return stream;
}

QList<QByteArray> randomLines(QRandomGenerator& random, int count, int longest)
{
    QList<QByteArray> lines;
    for (int i = 0; i < count; ++i) {
        const int length = random.bounded(4) == 0 ? random.bounded(longest) : random.bounded(40);
        QByteArray line(length, '\0');
        for (char& byte : line) {
            byte = static_cast<char>(random.bounded(256));
            if (byte == '\n')
                byte = '\r';
        }
        lines.append(line);
    }
    return lines;
}

} // namespace

class LineDecoderSuite final : public QObject
{
    Q_OBJECT

private slots:
    void nothingGivesNothing();
    void twoLinesAtOnceComeInOrder();
    void aSplitLineComesWhenItIsComplete();
    void everySplitGivesTheSameLines();
    void anyChunkingGivesTheSameLines_data();
    void anyChunkingGivesTheSameLines();
    void aTakenLineStaysAsItIs();
    void aLineOfAnyLengthIsCutExactly_data();
    void aLineOfAnyLengthIsCutExactly();
    void theLongestLineIsAccepted();
    void oneByteMoreWithoutLineFeedIsOversized();
    void oneByteMoreBeforeTheLineFeedIsOversized();
    void theLimitCountsFromTheStartOfTheLine();
    void linesBeforeTheOversizedOneComeFirst();
    void clearForgetsWhatWasReceived();
    void bufferedBytesCountsWhatIsNotHandedOut();
};

void LineDecoderSuite::nothingGivesNothing()
{
    LineDecoder decoder;
    QByteArray line("kept");
    QCOMPARE(decoder.next(line), Result::NeedsMore);
    decoder.append(QByteArray());
    QCOMPARE(decoder.next(line), Result::NeedsMore);
    QCOMPARE(line, QByteArray("kept"));
}

void LineDecoderSuite::twoLinesAtOnceComeInOrder()
{
    LineDecoder decoder;
    decoder.append("EVT 1\n\nEVT 2\nEV");
    QByteArray line;
    QCOMPARE(takeAll(decoder, line), QList<QByteArray>({"EVT 1", "", "EVT 2"}));
    QCOMPARE(decoder.next(line), Result::NeedsMore);
}

void LineDecoderSuite::aSplitLineComesWhenItIsComplete()
{
    LineDecoder decoder;
    QByteArray line;
    decoder.append("HIDE_");
    QCOMPARE(decoder.next(line), Result::NeedsMore);
    decoder.append("MINIBAR");
    QCOMPARE(decoder.next(line), Result::NeedsMore);
    decoder.append("\n");
    QCOMPARE(decoder.next(line), Result::Line);
    QCOMPARE(line, QByteArray("HIDE_MINIBAR"));
    QCOMPARE(decoder.next(line), Result::NeedsMore);
}

void LineDecoderSuite::everySplitGivesTheSameLines()
{
    const QList<QByteArray> lines = {"SHOW_MINIBAR 1200,40",     "",     "\r",
                                     "EVT {\"a\":\"\xC2\xB5\"}", "\xFF", "SHUTDOWN"};
    const QByteArray stream = joined(lines);
    for (int split = 0; split <= stream.size(); ++split) {
        LineDecoder decoder;
        QByteArray line;
        decoder.append(stream.left(split));
        QList<QByteArray> taken = takeAll(decoder, line);
        decoder.append(stream.mid(split));
        taken += takeAll(decoder, line);
        QCOMPARE(taken, lines);
    }
}

void LineDecoderSuite::anyChunkingGivesTheSameLines_data()
{
    QTest::addColumn<int>("longestLine");
    QTest::addColumn<int>("longestChunk");
    QTest::addColumn<bool>("inPlace");
    for (const bool inPlace : {false, true}) {
        for (const int longestLine : {100, 10'000, 700'000}) {
            for (const int longestChunk : {1, 30, 4096, 300'000}) {
                if (longestLine / longestChunk > 10'000)
                    continue;
                QTest::addRow("lines to %d in chunks to %d%s", longestLine, longestChunk,
                              inPlace ? " in place" : "")
                    << longestLine << longestChunk << inPlace;
            }
        }
    }
}

void LineDecoderSuite::anyChunkingGivesTheSameLines()
{
    QFETCH(int, longestLine);
    QFETCH(int, longestChunk);
    QFETCH(bool, inPlace);
    for (quint32 seed = 1; seed <= 5; ++seed) {
        QRandomGenerator random(seed);
        const QList<QByteArray> lines = randomLines(random, 60, longestLine);
        const QByteArray stream = joined(lines);
        LineDecoder decoder;
        QByteArray line;
        QList<QByteArray> taken;
        for (int position = 0; position < stream.size();) {
            const QByteArray chunk = stream.mid(position, 1 + random.bounded(longestChunk));
            position += chunk.size();
            (inPlace ? feedInPlace : feed)(decoder, chunk);
            if (random.bounded(3) != 0) // at times lines pile up
                taken += takeAll(decoder, line);
        }
        taken += takeAll(decoder, line);
        QVERIFY2(taken == lines, qPrintable(QStringLiteral("seed %1").arg(seed)));
    }
}

void LineDecoderSuite::aTakenLineStaysAsItIs()
{
    LineDecoder decoder;
    const QByteArray longLine(100'000, 'x');
    decoder.append(longLine + "\nfirst\nsecond\n");
    QByteArray line;
    QCOMPARE(decoder.next(line), Result::Line);
    const QByteArray keptLong = line;
    QCOMPARE(decoder.next(line), Result::Line);
    const QByteArray kept = line;
    QCOMPARE(decoder.next(line), Result::Line);
    decoder.append(QByteArray(200'000, 'y') + '\n');
    QCOMPARE(decoder.next(line), Result::Line);
    QCOMPARE(keptLong, longLine);
    QCOMPARE(kept, QByteArray("first"));
}

void LineDecoderSuite::aLineOfAnyLengthIsCutExactly_data()
{
    QTest::addColumn<int>("length");
    for (const int length :
         {0, 1, 4095, 4096, 0x7FFF, 0x8000, 0x8001, 0x3FFFF, 0x40000, 0x40001, 0x100000, 0x110001})
        QTest::addRow("%d", length) << length;
}

void LineDecoderSuite::aLineOfAnyLengthIsCutExactly()
{
    QFETCH(int, length);
    const QByteArray long1 = QByteArray(length, 'a');
    const QByteArray long2 = QByteArray(length, 'b');
    for (const int chunk : {4096, 0x200000}) {
        LineDecoder decoder;
        QByteArray line;
        QList<QByteArray> taken;
        const QByteArray stream = "x\n" + long1 + '\n' + long2 + "\ny\n" + long1 + '\n';
        for (int position = 0; position < stream.size(); position += chunk) {
            decoder.append(stream.mid(position, chunk));
            taken += takeAll(decoder, line);
        }
        QCOMPARE(taken, QList<QByteArray>({"x", long1, long2, "y", long1}));
    }
}

void LineDecoderSuite::theLongestLineIsAccepted()
{
    LineDecoder decoder;
    QByteArray line;
    decoder.append(QByteArray(limit, 'x'));
    QCOMPARE(decoder.next(line), Result::NeedsMore);
    decoder.append("\nEVT\n");
    QCOMPARE(decoder.next(line), Result::Line);
    QCOMPARE(line.size(), limit);
    QCOMPARE(decoder.next(line), Result::Line);
    QCOMPARE(line, QByteArray("EVT"));
}

void LineDecoderSuite::oneByteMoreWithoutLineFeedIsOversized()
{
    LineDecoder decoder;
    QByteArray line;
    decoder.append(QByteArray(limit, 'x'));
    QCOMPARE(decoder.next(line), Result::NeedsMore);
    decoder.append("x");
    QCOMPARE(decoder.next(line), Result::Oversized);
    QCOMPARE(decoder.next(line), Result::Oversized);
    decoder.append("\n"); // too late
    QCOMPARE(decoder.next(line), Result::Oversized);
}

void LineDecoderSuite::oneByteMoreBeforeTheLineFeedIsOversized()
{
    LineDecoder decoder;
    QByteArray line;
    decoder.append(QByteArray(limit + 1, 'x') + "\nEVT\n");
    QCOMPARE(decoder.next(line), Result::Oversized);
    decoder.clear();
    decoder.append(QByteArray(limit, 'x') + "\nEVT\n");
    QCOMPARE(decoder.next(line), Result::Line);
    QCOMPARE(line.size(), limit);
}

void LineDecoderSuite::theLimitCountsFromTheStartOfTheLine()
{
    LineDecoder decoder;
    QByteArray line;
    decoder.append("EVT 1\nEVT 2\n" + QByteArray(limit, 'x'));
    QCOMPARE(takeAll(decoder, line), QList<QByteArray>({"EVT 1", "EVT 2"}));
    QCOMPARE(decoder.next(line), Result::NeedsMore);
    decoder.append("\n");
    QCOMPARE(decoder.next(line), Result::Line);
    QCOMPARE(line.size(), limit);
}

void LineDecoderSuite::linesBeforeTheOversizedOneComeFirst()
{
    LineDecoder decoder;
    QByteArray line;
    decoder.append("EVT 1\nEVT 2\n" + QByteArray(limit + 1, 'x'));
    QCOMPARE(takeAll(decoder, line), QList<QByteArray>({"EVT 1", "EVT 2"}));
    QCOMPARE(decoder.next(line), Result::Oversized);
}

void LineDecoderSuite::clearForgetsWhatWasReceived()
{
    LineDecoder decoder;
    QByteArray line;
    decoder.append("EVT 1\nhalf a li");
    QCOMPARE(decoder.next(line), Result::Line);
    QCOMPARE(decoder.next(line), Result::NeedsMore);
    decoder.clear();
    QCOMPARE(decoder.bufferedBytes(), 0);
    decoder.append("ne\n");
    QCOMPARE(decoder.next(line), Result::Line);
    QCOMPARE(line, QByteArray("ne"));
}

void LineDecoderSuite::bufferedBytesCountsWhatIsNotHandedOut()
{
    LineDecoder decoder;
    QByteArray line;
    feedInPlace(decoder, "12345\n67");
    QCOMPARE(decoder.bufferedBytes(), 8);
    QCOMPARE(decoder.next(line), Result::Line);
    QCOMPARE(decoder.bufferedBytes(), 2);
    QCOMPARE(decoder.next(line), Result::NeedsMore);
    QCOMPARE(decoder.bufferedBytes(), 2);
    feedInPlace(decoder, "\n");
    QCOMPARE(decoder.next(line), Result::Line);
    QCOMPARE(decoder.bufferedBytes(), 0);
}

std::unique_ptr<QObject> makeLineDecoderSuite()
{
    return std::make_unique<LineDecoderSuite>();
}

#include "LineDecoderSuite.moc"
