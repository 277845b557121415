#include "utils/WavBytes.h"
#include "utils/WavFacts.h"
#include "utils/WavHeader.h"

#include <QBuffer>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <random>
#include <sys/stat.h>

using Utils::WavHeader;
using namespace WavBytes;

namespace {

WavHeader read(QByteArray bytes)
{
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    return WavHeader::read(buffer);
}

constexpr quint32 unknownSize = 0xFFFFFFFF;

} // namespace

class TestWavHeader final : public QObject
{
    Q_OBJECT

private slots:
    void valid_data();
    void valid();
    void invalid_data();
    void invalid();
    void recordings_data();
    void recordings();
    void paths_data();
    void paths();
    void namesOfAnyScript_data();
    void namesOfAnyScript();
    void sparseGiant();
    void pipesAreNotOpened();
    void mutants();
};

void TestWavHeader::valid_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("channels");
    QTest::addColumn<int>("bits");
    QTest::addColumn<quint32>("rate");
    QTest::addColumn<quint64>("count");

    const auto row = [](const char* name, const QByteArray& bytes, int channels, int bits, quint32 rate,
                        quint64 count) { QTest::newRow(name) << bytes << channels << bits << rate << count; };
    const QByteArray data = chunk("data", samples(400));

    row("8 bits, mono", file(fmt(1, 1, 8000, 8) + data), 1, 8, 8000, 400);
    row("16 bits, stereo", file(fmt() + data), 2, 16, 48000, 100);
    row("24 bits", file(fmt(1, 2, 44100, 24) + data), 2, 24, 44100, 66);
    row("32 bits", file(fmt(1, 2, 96000, 32) + data), 2, 32, 96000, 50);
    row("float", file(fmt(3, 2, 96000, 32) + data), 2, 32, 96000, 50);
    row("double", file(fmt(3, 1, 96000, 64) + data), 1, 64, 96000, 50);
    row("A-law", file(fmt(6, 1, 8000, 8) + data), 1, 8, 8000, 400);
    row("mu-law", file(fmt(7, 1, 8000, 8) + data), 1, 8, 8000, 400);
    row("extensible", file(chunk("fmt ", extensible(1, 4, 48000, 16)) + data), 4, 16, 48000, 50);
    row("extensible float", file(chunk("fmt ", extensible(3, 2, 48000, 32)) + data), 2, 32, 48000, 50);
    row("fmt with an extra size", file(chunk("fmt ", format(1, 2, 48000, 16) + little(quint16(0))) + data), 2,
        16, 48000, 100);
    row("the highest rate", file(fmt(1, 2, 3000000000U, 16) + data), 2, 16, 3000000000U, 100);
    row("rate 0", file(fmt(1, 2, 0, 16) + data), 2, 16, 0, 100);
    row("fmt after data", file(data + fmt()), 2, 16, 48000, 100);
    row("no data", file(fmt()), 2, 16, 48000, 0);
    row("empty data", file(fmt() + chunk("data", "")), 2, 16, 48000, 0);
    row("half a block at the end", file(fmt() + chunk("data", samples(402))), 2, 16, 48000, 100);
    row("other chunks around",
        file(chunk("JUNK", samples(28)) + fmt() + chunk("LIST", samples(6)) + data +
             chunk("id3 ", samples(10))),
        2, 16, 48000, 100);
    row("two data chunks", file(fmt() + data + chunk("data", samples(800))), 2, 16, 48000, 100);
    row("two formats", file(fmt() + fmt(1, 1, 8000, 8) + data), 2, 16, 48000, 100);
    row("odd chunk, padded", file(chunk("LIST", samples(7)) + fmt() + data), 2, 16, 48000, 100);
    row("odd chunk, not padded", file(chunk("LIST", samples(7), -1, false) + fmt() + data), 2, 16, 48000,
        100);
    row("odd chunk, padded with a letter", file(chunk("LIST", samples(7), -1, false) + "f" + fmt() + data), 2,
        16, 48000, 100);
    row("odd data, not padded, fmt after it",
        file(chunk("data", samples(401), -1, false) + fmt(1, 1, 8000, 8)), 1, 8, 8000, 401);

    row("data size too large", file(fmt() + chunk("data", samples(400), 1000000)), 2, 16, 48000, 100);
    row("data size unknown", file(fmt() + chunk("data", samples(400), unknownSize)), 2, 16, 48000, 100);
    row("data size 0 before samples", file(fmt() + chunk("data", samples(400), 0)), 2, 16, 48000, 0);
    row("data size too small", file(fmt() + chunk("data", samples(400), 200)), 2, 16, 48000, 50);

    const QByteArray elsewhere = chunk("data", samples(400), unknownSize);
    row("RF64", file(ds64(400) + fmt() + elsewhere, "RF64"), 2, 16, 48000, 100);
    row("BW64", file(ds64(400) + fmt() + elsewhere, "BW64"), 2, 16, 48000, 100);
    row("RF64, chunks after the data", file(ds64(400) + elsewhere + fmt(), "RF64"), 2, 16, 48000, 100);
    row("RF64 with a size of its own", file(ds64(8) + fmt() + data, "RF64"), 2, 16, 48000, 100);
    row("RF64, data size too large", file(ds64(quint64(1) << 62) + fmt() + elsewhere, "RF64"), 2, 16, 48000,
        100);
    row("RF64, largest data size", file(ds64(~quint64(0)) + fmt() + elsewhere, "RF64"), 2, 16, 48000, 100);
    row("RF64 without its sizes", file(fmt() + elsewhere, "RF64"), 2, 16, 48000, 100);
    row("RIFF with the sizes of RF64", file(ds64(8) + fmt() + elsewhere), 2, 16, 48000, 100);
}

void TestWavHeader::valid()
{
    QFETCH(QByteArray, bytes);
    QFETCH(int, channels);
    QFETCH(int, bits);
    QFETCH(quint32, rate);
    QFETCH(quint64, count);
    const WavHeader header = read(bytes);
    QVERIFY(header.isValid());
    QCOMPARE(int(header.channelCount()), channels);
    QCOMPARE(int(header.bitsPerSample()), bits);
    QCOMPARE(header.sampleRate(), rate);
    QCOMPARE(header.sampleCount(), count);
    QVERIFY(!header.isIqRecording());
}

void TestWavHeader::invalid_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const QByteArray data = chunk("data", samples(400));
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("a byte") << QByteArray("R");
    QTest::newRow("the form alone") << QByteArray("RIFF");
    QTest::newRow("no WAVE") << file(fmt() + data).replace("WAVE", "AVI ");
    QTest::newRow("big-endian") << file(fmt() + data, "RIFX");
    QTest::newRow("lower case") << file(fmt() + data, "riff");
    QTest::newRow("another form") << file(fmt() + data, "FORM");
    QTest::newRow("no format") << file(data);
    QTest::newRow("no chunks") << file({});
    QTest::newRow("format cut off") << file(fmt().left(20));
    QTest::newRow("format too small") << file(chunk("fmt ", format(1, 2, 48000, 16).left(14)) + data);
    QTest::newRow("format beyond the end") << file(chunk("LIST", samples(10), 100000) + fmt() + data);
    QTest::newRow("no channels") << file(fmt(1, 0, 48000, 16) + data);
    QTest::newRow("no bits") << file(fmt(1, 2, 48000, 0) + data);
    QTest::newRow("4 bits") << file(fmt(1, 2, 48000, 4) + data);
    QTest::newRow("compressed") << file(fmt(0x55, 2, 48000, 16) + data);
    QTest::newRow("extensible, compressed") << file(chunk("fmt ", extensible(0x55, 2, 48000, 16)) + data);
    QTest::newRow("extensible, cut off") << file(chunk("fmt ", extensible(1, 2, 48000, 16).left(18)) + data);
    QTest::newRow("zeros") << QByteArray(1000, '\0');
    QTest::newRow("text") << QByteArray("RIFFs are what guitarists play.\n").repeated(10);
}

void TestWavHeader::invalid()
{
    QFETCH(QByteArray, bytes);
    const WavHeader header = read(bytes);
    QVERIFY(!header.isValid());
    QCOMPARE(header.sampleCount(), quint64(0));
}

void TestWavHeader::recordings_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("isRecording");
    const QByteArray data = chunk("data", samples(400));
    const QByteArray aux = chunk("auxi", samples(164));
    QTest::newRow("before the data") << file(fmt() + aux + data) << true;
    QTest::newRow("after the data") << file(fmt() + data + aux) << true;
    QTest::newRow("odd") << file(fmt() + chunk("auxi", samples(163)) + data) << true;
    QTest::newRow("a large one") << file(fmt() + chunk("auxi", samples(0x100000)) + data) << true;
    QTest::newRow("in RF64") << file(ds64(400) + fmt() + aux + chunk("data", samples(400), unknownSize),
                                     "RF64")
                             << true;
    QTest::newRow("none") << file(fmt() + data) << false;
    QTest::newRow("one channel") << file(fmt(1, 1, 48000, 32) + aux + data) << false;
    QTest::newRow("three channels") << file(fmt(1, 3, 48000, 16) + aux + data) << false;
    QTest::newRow("no format") << file(aux + data) << false;
}

void TestWavHeader::recordings()
{
    QFETCH(QByteArray, bytes);
    QFETCH(bool, isRecording);
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("recording.wav"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    file.close();
    Utils::IqsWavInfo info{7, 7};
    QCOMPARE(Utils::probeIqsWav(path, info), isRecording);
    QCOMPARE(info.sampleCount, quint64(isRecording ? 100 : 7));
    QCOMPARE(info.sampleRate, quint32(isRecording ? 48000 : 7));
}

void TestWavHeader::paths_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("nothing") << QString();
    QTest::newRow("no such file") << QStringLiteral("/nonexistent/a.wav");
    QTest::newRow("a folder") << QDir::tempPath();
    QTest::newRow("a device") << QStringLiteral("/dev/zero");
    QTest::newRow("not ours to read") << QStringLiteral("/proc/1/mem");
}

void TestWavHeader::paths()
{
    QFETCH(QString, path);
    QVERIFY(!Utils::readWavFacts(path));
    Utils::IqsWavInfo info;
    QVERIFY(!Utils::probeIqsWav(path, info));
}

void TestWavHeader::namesOfAnyScript_data()
{
    QTest::addColumn<QString>("name");
    for (const char* name :
         {"a b.wav", "Größe.wav", "信号.WAV", "сигнал.wav", "🛰.wav", "%1.wav", "new\nline.wav"})
        QTest::newRow(name) << QString::fromUtf8(name);
}

void TestWavHeader::namesOfAnyScript()
{
    QFETCH(QString, name);
    QTemporaryDir folder;
    QFile wav(folder.filePath(name));
    const QByteArray bytes = file(fmt() + chunk("data", samples(400)));
    QVERIFY(wav.open(QIODevice::WriteOnly) && wav.write(bytes) == bytes.size());
    wav.close();
    const auto facts = Utils::readWavFacts(wav.fileName());
    QVERIFY(facts);
    QCOMPARE(facts->sampleCount, quint64(100));
    QCOMPARE(facts->sampleRate, quint32(48000));
}

// 6 GiB on paper, a few blocks on the disk.
void TestWavHeader::sparseGiant()
{
    constexpr quint64 size = quint64(6) << 30;
    QTemporaryDir folder;
    QFile giant(folder.filePath(QStringLiteral("giant.wav")));
    const QByteArray begin = file(ds64(size) + fmt() + chunk("data", {}, unknownSize), "RF64");
    QVERIFY(giant.open(QIODevice::WriteOnly) && giant.write(begin) == begin.size());
    QVERIFY(giant.resize(qint64(size) + begin.size()));
    giant.close();
    const auto facts = Utils::readWavFacts(giant.fileName());
    QVERIFY(facts);
    QCOMPARE(facts->sampleCount, size / 4);
}

void TestWavHeader::pipesAreNotOpened()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("pipe.wav"));
    QCOMPARE(mkfifo(qPrintable(path), 0600), 0);
    QVERIFY(!Utils::readWavFacts(path)); // would wait for ever

    QProcess pipe; // one that is open already
    pipe.start(QStringLiteral("cat"), {});
    QVERIFY(pipe.waitForStarted());
    pipe.write(file(fmt() + chunk("data", samples(400))));
    pipe.closeWriteChannel();
    QVERIFY(pipe.waitForFinished());
    QVERIFY(!WavHeader::read(pipe).isValid());
}

// No bytes lead to more samples than the file holds.
void TestWavHeader::mutants()
{
    constexpr int count = 2000;
    const QByteArray seeds[] = {
        file(fmt() + chunk("auxi", samples(9)) + chunk("data", samples(60))),
        file(chunk("fmt ", extensible(3, 2, 48000, 32)) + chunk("data", samples(64)) +
             chunk("LIST", samples(5))),
        file(ds64(64) + fmt() + chunk("data", samples(64), unknownSize), "RF64"),
    };
    std::mt19937 random(20261121);
    int stillValid = 0;
    for (int i = 0; i < count; ++i) {
        QByteArray bytes = seeds[i % 3];
        const int changes = 1 + int(random() % 4);
        for (int change = 0; change < changes; ++change)
            bytes[int(random() % uint(bytes.size()))] = char(random() % 2 == 0 ? random() : 0xFF);
        if (random() % 4 == 0)
            bytes.truncate(int(random() % uint(bytes.size())));
        const WavHeader header = read(bytes);
        QVERIFY2(header.dataSize() <= quint64(bytes.size()), bytes.toHex().constData());
        QVERIFY2(header.sampleCount() * header.blockSize() <= quint64(bytes.size()),
                 bytes.toHex().constData());
        stillValid += header.isValid() ? 1 : 0;
    }
    QVERIFY(stillValid > count / 10 && stillValid < count);
}

QTEST_GUILESS_MAIN(TestWavHeader)

#include "tst_wav_header.moc"
