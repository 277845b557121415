#pragma once

#include <QByteArray>
#include <QVector>

#include <functional>

// Puts workbooks together, byte by byte.
namespace WorkbookBytes {

// One file of an archive; what is -1 is told truthfully.
struct Entry
{
    QByteArray name;
    QByteArray content;
    bool deflated = true;
    bool describedAfterwards =
        false;            // sizes and checksum stand behind the content, as streaming writers leave them
    qint64 saidSize = -1; // unpacked
    int saidMethod = -1;
    int flags = 0;
    qint64 saidChecksum = -1;
    QByteArray packed = {}; // stands for the content when it is not empty; its size is then said
};

[[nodiscard]] QByteArray deflated(const QByteArray& content);
// Deflates `count` times the same piece without ever holding all of it.
[[nodiscard]] QByteArray deflatedManyTimes(const QByteArray& piece, int count);

// An archive. `prefix` stands before it, `comment` at its end; `saidEntries` is the count that it claims.
// `large` makes it a ZIP64 one.
[[nodiscard]] QByteArray archive(const QVector<Entry>& entries, const QByteArray& prefix = {},
                                 const QByteArray& comment = {}, int saidEntries = -1, bool large = false);

// The documents of a workbook; each is given its usual place in archive().
struct Documents
{
    QByteArray packageRelationships;
    QByteArray workbook;
    QByteArray workbookRelationships;
    QByteArray sheet;
    QByteArray sharedStrings; // left out when it is empty

    Documents();
    [[nodiscard]] QVector<Entry> entries() const;
};

// A sheet with these rows inside its data.
[[nodiscard]] QByteArray sheetXml(const QByteArray& rows);
// A table of texts with these items in it.
[[nodiscard]] QByteArray stringsXml(const QByteArray& items);
// Relationships, each as "id type target", where the type is its last word.
[[nodiscard]] QByteArray relationshipsXml(const QVector<QByteArray>& relationships);
// An inline cell; without a reference when that is empty.
[[nodiscard]] QByteArray cell(const QByteArray& reference, const QByteArray& text);
[[nodiscard]] QByteArray sharedCell(const QByteArray& reference, int index);

// A workbook of these rows, or of all these documents.
[[nodiscard]] QByteArray workbook(const QByteArray& rows, const QByteArray& sharedItems = {});
[[nodiscard]] QByteArray workbook(const Documents& documents);

} // namespace WorkbookBytes
