#include "system/SampleWaves.h"

#include "support/ChildProcess.h"
#include "support/Waiting.h"
#include "utils/WavBytes.h"

#include <QDir>
#include <QFile>

namespace {

struct Recipe
{
    const char* file;
    int rate;           // Hz
    const char* format; // arguments of sox
    const char* seconds;
    double samples;
    const char* facts;
};

constexpr Recipe recipes[] = {
    {"папка/внутри.wav", 48000, "-c 2 -b 16", "0.5", 24000, "24k / 500ms"},
    {"a recording of five carriers, each of them twenty megahertz wide, from the third week of the spring "
     "campaign.wav",
     96000, "-c 2 -b 24", "0.25", 24000, "24k / 250ms"},
    {"eight bits.wav", 8000, "-c 1 -b 8", "0.5", 4000, "4k / 500ms"},
    {"first.wav", 48000, "-c 2 -b 16", "1", 48000, "48k / 1s"},
    {"float.WAV", 44100, "-c 1 -e floating-point -b 32", "2", 88200, "88k / 2s"},
    {"Запись сигнала.wav", 22050, "-c 1 -b 16", "1", 22050, "22k / 1s"},
    {"測定データ.wav", 12000, "-c 2 -b 16", "1", 12000, "12k / 1s"},
};

bool runSox(const QString& path, const Recipe& recipe)
{
    TestSupport::ChildProcess sox;
    const QStringList arguments =
        QStringList{QStringLiteral("-n"), QStringLiteral("-r"), QString::number(recipe.rate)} +
        QString::fromLatin1(recipe.format).split(QLatin1Char(' ')) +
        QStringList{QStringLiteral("-t"),
                    QStringLiteral("wav"),
                    path,
                    QStringLiteral("synth"),
                    QString::fromLatin1(recipe.seconds),
                    QStringLiteral("sine"),
                    QStringLiteral("440")};
    sox.start(QStringLiteral("sox"), arguments);
    return sox.waitForFinished(TestSupport::defaultDeadline) && sox.exitCode() == 0;
}

bool write(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

} // namespace

QVector<SampleWave> writeSampleWaves(const QString& folder)
{
    const QDir root(folder);
    QVector<SampleWave> waves;
    for (const Recipe& recipe : recipes) {
        const QString path = root.filePath(QString::fromUtf8(recipe.file));
        if (!root.mkpath(QFileInfo(path).path()) || !runSox(path, recipe))
            return {};
        waves.append({QString::fromUtf8(recipe.file), recipe.samples, double(recipe.rate),
                      QString::fromUtf8(recipe.facts)});
    }
    // What the writers of I/Q recordings leave beside the samples.
    constexpr int pairs = 5000;
    const QByteArray recording =
        WavBytes::file(WavBytes::fmt(1, 2, 1000000, 16) + WavBytes::chunk("auxi", QByteArray(68, '\1')) +
                       WavBytes::chunk("data", WavBytes::samples(pairs * 4)));
    const QByteArray text = "This is a text.\n";
    if (!write(root.filePath(QStringLiteral("recording.wav")), recording) ||
        !write(root.filePath(QStringLiteral("text.wav")), text) ||
        !write(root.filePath(QStringLiteral("notes.txt")), text) ||
        !write(root.filePath(QStringLiteral("first.wav.old")), text))
        return {};
    constexpr int afterFloat = 5;
    waves.insert(afterFloat, {QStringLiteral("recording.wav"), pairs, 1e6, QStringLiteral("5k / 5ms")});
    waves.insert(afterFloat + 1, {QStringLiteral("text.wav"), 0, 0, QStringLiteral("-")});
    return waves;
}
