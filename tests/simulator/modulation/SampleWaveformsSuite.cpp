#include "simulator/modulation/SampleWaveforms.h"

#include "simulator/modulation/ModulationSuites.h"
#include "simulator/modulation/WaveformFile.h"
#include "simulator/modulation/WaveformFiles.h"

#include <QDirIterator>
#include <QTest>
#include <QtEndian>

#include <cmath>

using namespace Simulator;

// The signals that the simulator brings along.
class SampleWaveformsSuite final : public QObject
{
    Q_OBJECT

private slots:
    void files_data();
    void files();
    void nothingElseIsWritten();
    void whatIsThereStays();
    void folderThatCannotBeMade();
};

void SampleWaveformsSuite::files_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<bool>("recording");
    QTest::addColumn<double>("weakest"); // magnitude, of full scale
    QTest::newRow("chirp") << QStringLiteral("chirp, 400 kHz.wav") << false << 0.89;
    QTest::newRow("tones") << QStringLiteral("eight tones, 50 kHz apart.wav") << false << 0.0;
    QTest::newRow("QPSK") << QStringLiteral("recordings/QPSK, 100 kBd.wav") << true << 0.0;
}

void SampleWaveformsSuite::files()
{
    QFETCH(QString, file);
    QFETCH(double, weakest);
    const WaveformFolder folder;
    provideSampleWaveforms(folder.path() + QStringLiteral("/data"));
    const QString path = folder.path() + QStringLiteral("/data/") + file;
    QString fault;
    const auto facts = readWaveformFacts(path, fault);
    QVERIFY2(facts, qPrintable(fault));
    QCOMPARE(facts->samples, 10000.0);
    QCOMPARE(facts->sampleRateHz, 1e6);
    QTEST(facts->isIqRecording, "recording");

    QFile opened(path);
    QVERIFY(opened.open(QIODevice::ReadOnly));
    const QByteArray samples = opened.readAll().right(10000 * 4);
    double least = 1;
    double most = 0;
    for (int at = 0; at < samples.size(); at += 4) {
        const double inPhase = qFromLittleEndian<qint16>(samples.constData() + at) / 32767.0;
        const double quadrature = qFromLittleEndian<qint16>(samples.constData() + at + 2) / 32767.0;
        const double magnitude = std::hypot(inPhase, quadrature);
        least = std::min(least, magnitude);
        most = std::max(most, magnitude);
    }
    QVERIFY2(most > 0.4 && most < 0.91, qPrintable(QString::number(most)));
    QVERIFY2(least >= weakest, qPrintable(QString::number(least)));
}

void SampleWaveformsSuite::nothingElseIsWritten()
{
    const WaveformFolder folder;
    provideSampleWaveforms(folder.path());
    QDirIterator found(folder.path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    int count = 0;
    for (; found.hasNext(); found.next())
        ++count;
    QCOMPARE(count, 3);
}

void SampleWaveformsSuite::whatIsThereStays()
{
    WaveformFolder folder;
    const QString kept = folder.add(QStringLiteral("chirp, 400 kHz.wav"), "mine");
    provideSampleWaveforms(folder.path());
    QFile file(kept);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("mine"));
    QVERIFY(QFile::exists(folder.path() + QStringLiteral("/eight tones, 50 kHz apart.wav")));
}

void SampleWaveformsSuite::folderThatCannotBeMade()
{
    WaveformFolder folder;
    const QString file = folder.add(QStringLiteral("file"), "no folder");
    provideSampleWaveforms(file + QStringLiteral("/data"));
    QVERIFY(QFileInfo(file).isFile());
}

std::unique_ptr<QObject> makeSampleWaveformsSuite()
{
    return std::make_unique<SampleWaveformsSuite>();
}

#include "SampleWaveformsSuite.moc"
