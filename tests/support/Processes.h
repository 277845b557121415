#pragma once

#include <QByteArray>
#include <QVector>
#include <optional>

namespace TestSupport {

// What a running process uses, as the kernel tells it.
struct ProcessFacts
{
    qint64 memory = 0;   // KiB of memory of its own (anonymous, resident)
    int descriptors = 0; // open files and sockets
    int threads = 0;
};

// Nothing when there is no such process.
[[nodiscard]] std::optional<ProcessFacts> factsOf(qint64 processId);
// The processes that this one has started and that are still there, dead ones that nobody fetched included.
[[nodiscard]] QVector<qint64> childrenOf(qint64 processId);
// Whether it runs; a dead one that nobody fetched does not.
[[nodiscard]] bool isRunning(qint64 processId);
// How long its main thread has been ready to run while other programs had the processors, in ms; 0 where the
// kernel does not tell.
[[nodiscard]] double waitedForProcessor(qint64 processId);
// What the system shows as its command line; zero bytes between the arguments.
[[nodiscard]] QByteArray commandLineOf(qint64 processId);
// How often the bytes stand in its memory; nothing when that cannot be read.
[[nodiscard]] std::optional<int> countInMemory(qint64 processId, const QByteArray& bytes);

} // namespace TestSupport
