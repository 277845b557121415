// Performs every file of the folders and files given: usage: <program> PATH...
// The way to try seeds and findings with any compiler and under any checker.

#include "fuzz/Fuzzing.h"

#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

namespace {

bool perform(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "%s: %s\n", qPrintable(path), qPrintable(file.errorString()));
        return false;
    }
    const QByteArray input = file.readAll();
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.constData()),
                           std::size_t(input.size()));
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    int performed = 0;
    for (int i = 1; i < argc; ++i) {
        const QString path = QString::fromLocal8Bit(argv[i]);
        if (QFileInfo(path).isFile()) {
            performed += perform(path) ? 1 : 0;
            continue;
        }
        for (QDirIterator files(path, QDir::Files); files.hasNext();) {
            performed += perform(files.next()) ? 1 : 0;
        }
    }
    std::printf("%d inputs\n", performed);
    return performed > 0 ? 0 : 1;
}
