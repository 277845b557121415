#include "simulator/modulation/WaveformFile.h"

#include "simulator/modulation/ModulationSuites.h"
#include "simulator/modulation/WaveformFiles.h"

#include <QtTest>

using namespace Simulator;

// What is read from the header of a file, and what is said of a file that is none.
class WaveformFileSuite final : public QObject
{
    Q_OBJECT

private slots:
    void headers_data();
    void headers();
    void missingFile();
};

void WaveformFileSuite::headers_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<double>("samples"); // 0: refused
    QTest::addColumn<double>("rate");
    QTest::addColumn<bool>("recording");
    QTest::addColumn<QString>("sentence"); // %1: the path
    const auto good = [](const char* name, const QByteArray& bytes, double samples, double rate,
                         bool recording = false) {
        QTest::newRow(name) << bytes << samples << rate << recording << QString();
    };
    const auto bad = [](const char* name, const QByteArray& bytes,
                        const char* sentence = "'%1' is no WAV file.") {
        QTest::newRow(name) << bytes << 0.0 << 0.0 << false << QString::fromLatin1(sentence);
    };
    const QByteArray data = chunk("data", QByteArray(24, 'x'));
    good("stereo", wav(48000, 48000), 48000, 48000);
    good("mono 8 bits", riff(formatChunk(1, 8000, 8) + data), 24, 8000);
    good("stereo 24 bits", riff(formatChunk(2, 96000, 24) + data), 4, 96000);
    good("odd chunk before", riff(chunk("LIST", "odd") + formatChunk(2, 1000) + data), 6, 1000);
    good("format behind the data", riff(data + formatChunk(2, 1000)), 6, 1000);
    good("I/Q recording", wav(10, 1000000, true), 10, 1e6, true);
    good("auxi with one channel", riff(formatChunk(1, 1000) + chunk("auxi", "x") + data), 12, 1000);
    good("data cut off", wav(100, 1000).chopped(200), 50, 1000);
    bad("empty", {});
    bad("text", "This is no sound at all, however long it may be.");
    bad("half a header", wav(1, 1).left(20));
    bad("RIFF of another kind", chunk("RIFF", "AVI " + formatChunk(2, 1000) + data));
    bad("no format", riff(data));
    bad("short format", riff(chunk("fmt ", "abc") + data));
    bad("no data", riff(formatChunk(2, 1000)), "'%1' holds no samples.");
    bad("no channels", riff(formatChunk(0, 1000) + data));
    bad("no bits", riff(formatChunk(2, 1000, 0) + data));
    bad("no rate", riff(formatChunk(2, 0) + data));
    bad("no samples", wav(0, 1000), "'%1' holds no samples.");
}

void WaveformFileSuite::headers()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, sentence);
    WaveformFolder folder;
    const QString path = folder.add(QStringLiteral("a.wav"), bytes);
    QString fault;
    const auto facts = readWaveformFacts(path, fault);
    QCOMPARE(fault, sentence.isEmpty() ? QString() : sentence.arg(path));
    QCOMPARE(facts.has_value(), sentence.isEmpty());
    const WaveformFacts read = facts.value_or(WaveformFacts());
    QTEST(read.samples, "samples");
    QTEST(read.sampleRateHz, "rate");
    QTEST(read.isIqRecording, "recording");
}

void WaveformFileSuite::missingFile()
{
    QString fault;
    QVERIFY(!readWaveformFacts(QStringLiteral("/nonexistent/a.wav"), fault));
    QVERIFY2(fault.startsWith(QLatin1String("'/nonexistent/a.wav' cannot be read: ")), qPrintable(fault));
}

std::unique_ptr<QObject> makeWaveformFileSuite()
{
    return std::make_unique<WaveformFileSuite>();
}

#include "WaveformFileSuite.moc"
