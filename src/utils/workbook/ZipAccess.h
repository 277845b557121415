#pragma once

#include <QString>

#include <functional>

class QIODevice;

namespace Workbook {

// Reads files out of a ZIP archive, piece by piece. Stored and deflated ones, as a workbook's are.
class ZipAccess final
{
public:
    // The device is open for reading, can be positioned and outlives the archive.
    explicit ZipAccess(QIODevice& device);
    ~ZipAccess();
    Q_DISABLE_COPY(ZipAccess)

    // What is wrong with the archive as a whole; empty if nothing is.
    [[nodiscard]] QString problem() const { return m_problem; }

    // Whether the archive has such a file; upper and lower case are one.
    [[nodiscard]] bool contains(const QString& name) const;

    // Gives the file's bytes to `take` until that says no. What is wrong with the file; empty if nothing is:
    // then all of it has been given, and its checksum is right, or `take` has said no.
    [[nodiscard]] QString read(const QString& name,
                               const std::function<bool(const char* bytes, int size)>& take) const;

private:
    void* m_archive = nullptr;
    QString m_problem;
};

} // namespace Workbook
