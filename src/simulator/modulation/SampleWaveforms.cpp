#include "simulator/modulation/SampleWaveforms.h"

#include <QDir>
#include <QSaveFile>
#include <QtEndian>

#include <cmath>
#include <complex>

namespace Simulator {

namespace {

constexpr quint32 sampleRate = 1000000; // Hz, of each of them
constexpr int samplesInAll = 10000;     // of each of them: 10 ms
constexpr double peak = 0.9;            // of full scale
constexpr double twoPi = 6.283185307179586;

using Sample = std::complex<double>; // the unit circle is full scale

// Sweeps once from -200 to 200 kHz.
Sample chirp(int index)
{
    constexpr double span = 0.4; // of the sample rate
    const double position = double(index) / samplesInAll - 0.5;
    return std::polar(peak, twoPi * span * samplesInAll * position * position / 2);
}

// Eight tones, 50 kHz apart, with phases that keep the crest low.
Sample tones(int index)
{
    constexpr int count = 8;
    constexpr double spacing = 0.05; // of the sample rate
    Sample sum;
    for (int tone = 0; tone < count; ++tone) {
        const double cycles = (tone - (count - 1) / 2.0) * spacing * index + tone * tone / (2.0 * count);
        sum += std::polar(peak / count, twoPi * cycles);
    }
    return sum;
}

// Pseudo-random, and the same every time.
Sample symbol(int number)
{
    constexpr quint32 multiplier = 2654435761U;
    const quint32 bits = (quint32(number) * multiplier) >> 15U;
    constexpr double level = peak * 0.7071067811865476;
    return {bits & 1U ? level : -level, bits & 2U ? level : -level};
}

// 100,000 symbols a second; one goes over into the next on half a cosine.
Sample qpsk(int index)
{
    constexpr int samplesPerSymbol = 10;
    constexpr int symbols = samplesInAll / samplesPerSymbol;
    const int current = index / samplesPerSymbol;
    const double share = double(index % samplesPerSymbol) / samplesPerSymbol;
    const double next = (1 - std::cos(twoPi / 2 * share)) / 2;
    return symbol(current) * (1 - next) + symbol((current + 1) % symbols) * next;
}

struct Signal
{
    const char* file;
    Sample (*at)(int index);
    bool isRecording;
};

constexpr Signal sampleSignals[] = {
    {"chirp, 400 kHz.wav", chirp, false},
    {"eight tones, 50 kHz apart.wav", tones, false},
    {"recordings/QPSK, 100 kBd.wav", qpsk, true},
};

template <typename Number>
void append(QByteArray& bytes, Number number)
{
    const Number little = qToLittleEndian(number);
    bytes.append(reinterpret_cast<const char*>(&little), sizeof little);
}

void appendChunk(QByteArray& bytes, const char* name, const QByteArray& content)
{
    bytes += name;
    append(bytes, quint32(content.size()));
    bytes += content;
}

QByteArray format()
{
    constexpr quint16 pcm = 1;
    constexpr quint16 channels = 2;
    constexpr quint16 bits = 16;
    constexpr quint16 block = channels * bits / 8;
    QByteArray content;
    append(content, pcm);
    append(content, channels);
    append(content, sampleRate);
    append(content, sampleRate * block);
    append(content, block);
    append(content, bits);
    return content;
}

QByteArray wavFile(const Signal& signal)
{
    constexpr double fullScale = 32767;
    QByteArray data;
    for (int index = 0; index < samplesInAll; ++index) {
        const Sample sample = signal.at(index);
        append(data, qint16(std::lround(sample.real() * fullScale)));
        append(data, qint16(std::lround(sample.imag() * fullScale)));
    }
    QByteArray wave = "WAVE";
    appendChunk(wave, "fmt ", format());
    constexpr int auxiliarySize = 68;
    if (signal.isRecording) // times and frequencies, none of them known; that it is there is what counts
        appendChunk(wave, "auxi", QByteArray(auxiliarySize, '\0'));
    appendChunk(wave, "data", data);
    QByteArray file;
    appendChunk(file, "RIFF", wave);
    return file;
}

} // namespace

void provideSampleWaveforms(const QString& folder)
{
    for (const Signal& signal : sampleSignals) {
        const QFileInfo place(QDir(folder), QLatin1String(signal.file));
        if (place.exists() || !QDir().mkpath(place.path()))
            continue;
        QSaveFile file(place.filePath());
        if (file.open(QIODevice::WriteOnly)) {
            file.write(wavFile(signal));
            file.commit();
        }
    }
}

} // namespace Simulator
