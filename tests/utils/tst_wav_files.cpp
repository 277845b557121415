// WAV files that other programs have written, read beside what another library says of them.

#include "utils/WavBytes.h"
#include "utils/WavFacts.h"
#include "utils/WavHeader.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <memory>
#include <random>
#include <sndfile.h>

using namespace WavBytes;

namespace {

using SoundFile = std::unique_ptr<SNDFILE, decltype(&sf_close)>;

SoundFile openSound(const QString& path, SF_INFO& info, int mode = SFM_READ)
{
    return {sf_open(QFile::encodeName(path).constData(), mode, &info), &sf_close};
}

bool isWav(const SF_INFO& info)
{
    const int major = info.format & SF_FORMAT_TYPEMASK;
    return major == SF_FORMAT_WAV || major == SF_FORMAT_WAVEX || major == SF_FORMAT_RF64;
}

bool run(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    return process.waitForFinished() && process.exitStatus() == QProcess::NormalExit &&
           process.exitCode() == 0;
}

} // namespace

class TestWavFiles final : public QObject
{
    Q_OBJECT

private slots:
    void writtenBySox_data();
    void writtenBySox();
    void writtenByPython();
    void writtenBySndfile_data();
    void writtenBySndfile();
    void mutantsReadAlike();

private:
    QTemporaryDir m_folder;
    QString m_path = m_folder.filePath(QStringLiteral("file.wav"));
};

void TestWavFiles::writtenBySox_data()
{
    QTest::addColumn<QStringList>("encoding");
    QTest::addColumn<int>("channels");
    QTest::addColumn<quint32>("rate");
    const auto row = [](const char* name, const char* encoding, int channels, quint32 rate) {
        QTest::newRow(name) << QString::fromLatin1(encoding).split(QLatin1Char(' ')) << channels << rate;
    };
    row("8 bits", "-b 8 -e unsigned-integer", 1, 8000);
    row("16 bits", "-b 16 -e signed-integer", 2, 44100);
    row("24 bits", "-b 24 -e signed-integer", 2, 48000);
    row("32 bits", "-b 32 -e signed-integer", 1, 96000);
    row("float", "-b 32 -e floating-point", 2, 192000);
    row("double", "-b 64 -e floating-point", 1, 48000);
    row("six channels", "-b 24 -e signed-integer", 6, 48000);
    row("A-law", "-e a-law", 1, 8000);
    row("mu-law", "-e mu-law", 1, 8000);
}

void TestWavFiles::writtenBySox()
{
    constexpr quint64 count = 4801;
    QFETCH(QStringList, encoding);
    QFETCH(int, channels);
    QFETCH(quint32, rate);
    const QString rateText = QString::number(rate);
    const QString channelText = QString::number(channels);
    QVERIFY(run(QStringLiteral("sox"), QStringList{QStringLiteral("-D"), QStringLiteral("-r"), rateText,
                                                   QStringLiteral("-c"), channelText, QStringLiteral("-n")} +
                                           encoding +
                                           QStringList{m_path, QStringLiteral("trim"), QStringLiteral("0"),
                                                       QStringLiteral("4801s")}));
    const auto facts = Utils::readWavFacts(m_path);
    QVERIFY(facts);
    QCOMPARE(facts->sampleCount, count);
    QCOMPARE(facts->sampleRate, rate);
}

void TestWavFiles::writtenByPython()
{
    const QString script = QStringLiteral("import sys, wave\n"
                                          "file = wave.open(sys.argv[1], 'wb')\n"
                                          "file.setparams((2, 2, 12345, 0, 'NONE', ''))\n"
                                          "file.writeframes(bytes(4 * 777))\n");
    QVERIFY(run(QStringLiteral("python3"), {QStringLiteral("-c"), script, m_path}));
    const auto facts = Utils::readWavFacts(m_path);
    QVERIFY(facts);
    QCOMPARE(facts->sampleCount, quint64(777));
    QCOMPARE(facts->sampleRate, quint32(12345));
}

void TestWavFiles::writtenBySndfile_data()
{
    QTest::addColumn<int>("format");
    QTest::newRow("plain") << (SF_FORMAT_WAV | SF_FORMAT_PCM_16);
    QTest::newRow("extensible") << (SF_FORMAT_WAVEX | SF_FORMAT_PCM_24);
    QTest::newRow("extensible float") << (SF_FORMAT_WAVEX | SF_FORMAT_FLOAT);
    QTest::newRow("RF64") << (SF_FORMAT_RF64 | SF_FORMAT_PCM_16);
}

void TestWavFiles::writtenBySndfile()
{
    QFETCH(int, format);
    constexpr int count = 1234;
    SF_INFO info = {};
    info.format = format;
    info.channels = 2;
    info.samplerate = 50000;
    {
        const SoundFile sound = openSound(m_path, info, SFM_WRITE);
        QVERIFY(sound);
        QVERIFY(sf_set_string(sound.get(), SF_STR_TITLE, "odd") == 0);
        const std::vector<short> silence(2 * count);
        QCOMPARE(sf_writef_short(sound.get(), silence.data(), count), sf_count_t(count));
    }
    const auto facts = Utils::readWavFacts(m_path);
    QVERIFY(facts);
    QCOMPARE(facts->sampleCount, quint64(count));
    QCOMPARE(facts->sampleRate, quint32(50000));
}

// Where both take a mutated file for a WAV file they agree on rate and channels, and, unless bits or sizes
// have become such that they are free to differ, on the count.
void TestWavFiles::mutantsReadAlike()
{
    constexpr int count = 500;
    const QByteArray seed = file(fmt() + chunk("LIST", samples(12)) + chunk("data", samples(4000)));
    std::mt19937 random(7);
    int compared = 0;
    for (int i = 0; i < count; ++i) {
        QByteArray bytes = seed;
        bytes[int(random() % 68)] = char(random());
        QFile mutant(m_path);
        QVERIFY(mutant.open(QIODevice::WriteOnly | QIODevice::Truncate) &&
                mutant.write(bytes) == bytes.size());
        mutant.close();
        SF_INFO info = {};
        const SoundFile sound = openSound(m_path, info);
        QVERIFY(mutant.open(QIODevice::ReadOnly));
        const Utils::WavHeader header = Utils::WavHeader::read(mutant);
        if (!sound || !isWav(info) || !header.isValid())
            continue;
        QCOMPARE(quint32(info.samplerate), header.sampleRate());
        QCOMPARE(info.channels, int(header.channelCount()));
        if (header.bitsPerSample() == 16) {
            QCOMPARE(quint64(info.frames), header.sampleCount());
            ++compared;
        }
    }
    QVERIFY2(compared > count / 3, qPrintable(QString::number(compared)));
}

QTEST_GUILESS_MAIN(TestWavFiles)

#include "tst_wav_files.moc"
