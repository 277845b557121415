#include "utils/workbook/WorkbookBytes.h"

#include <QList>
#include <QtEndian>

#include <zlib.h>

namespace WorkbookBytes {
namespace {

template <typename Number>
QByteArray little(Number number)
{
    QByteArray bytes(sizeof(Number), '\0');
    qToLittleEndian(number, bytes.data());
    return bytes;
}

const QByteArray header = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n";
const QByteArray mainNamespace = "xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\"";
const QByteArray relationshipNamespace =
    "http://schemas.openxmlformats.org/officeDocument/2006/relationships";

// An entry as it is written: what is said of it, and its bytes.
struct Written
{
    const Entry& entry;
    QByteArray packed;
    quint32 checksum;
    quint32 size;
    quint32 offset; // of the local header
    bool large;

    // What both headers have in common, from the version on.
    [[nodiscard]] QByteArray facts(bool known, bool elsewhere) const
    {
        const int method = entry.saidMethod >= 0 ? entry.saidMethod : entry.deflated ? Z_DEFLATED : 0;
        const int flags = entry.flags | (entry.describedAfterwards ? 8 : 0);
        return little(quint16(large ? 45 : 20)) + little(quint16(flags)) + little(quint16(method)) +
               little(quint16(0)) + little(quint16(0x21)) + little(known ? checksum : 0) +
               (elsewhere ? QByteArray(8, '\xff')
                          : little(known ? quint32(packed.size()) : 0) + little(known ? size : 0)) +
               little(quint16(entry.name.size())) + little(quint16(elsewhere ? 20 : 0));
    }
    [[nodiscard]] QByteArray largeSizes() const
    {
        return large ? little(quint16(1)) + little(quint16(16)) + little(quint64(size)) +
                           little(quint64(packed.size()))
                     : QByteArray();
    }
    [[nodiscard]] QByteArray local() const
    {
        const bool known = !entry.describedAfterwards;
        QByteArray bytes =
            "PK\3\4" + facts(known, large) + entry.name + (known ? largeSizes() : QByteArray()) + packed;
        if (!known)
            bytes += "PK\7\10" + little(checksum) + little(quint32(packed.size())) + little(size);
        return bytes;
    }
    [[nodiscard]] QByteArray central() const
    {
        return "PK\1\2" + little(quint16(20)) + facts(true, false) + little(quint16(0)) + little(quint16(0)) +
               little(quint16(0)) + little(quint32(0)) + little(offset) + entry.name;
    }
};

QByteArray largeEnd(quint64 count, quint64 size, quint64 offset)
{
    const QByteArray record = "PK\6\6" + little(quint64(44)) + little(quint16(45)) + little(quint16(45)) +
                              little(quint32(0)) + little(quint32(0)) + little(count) + little(count) +
                              little(size) + little(offset);
    return record + "PK\6\7" + little(quint32(0)) + little(offset + size) + little(quint32(1));
}

} // namespace

QByteArray deflatedManyTimes(const QByteArray& piece, int count)
{
    z_stream stream = {};
    deflateInit2(&stream, Z_BEST_SPEED, Z_DEFLATED, -MAX_WBITS, MAX_MEM_LEVEL, Z_DEFAULT_STRATEGY);
    QByteArray packed;
    QByteArray buffer(1 << 16, '\0');
    for (int i = 0; i < count; ++i) {
        stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(piece.constData()));
        stream.avail_in = uInt(piece.size());
        do {
            stream.next_out = reinterpret_cast<Bytef*>(buffer.data());
            stream.avail_out = uInt(buffer.size());
            deflate(&stream, i == count - 1 ? Z_FINISH : Z_NO_FLUSH);
            packed.append(buffer.constData(), buffer.size() - int(stream.avail_out));
        } while (stream.avail_out == 0);
    }
    deflateEnd(&stream);
    return packed;
}

QByteArray deflated(const QByteArray& content)
{
    return deflatedManyTimes(content, 1);
}

QByteArray archive(const QVector<Entry>& entries, const QByteArray& prefix, const QByteArray& comment,
                   int saidEntries, bool large)
{
    QByteArray bytes = prefix;
    QByteArray directory;
    for (const Entry& entry : entries) {
        const QByteArray packed = !entry.packed.isEmpty() ? entry.packed
                                  : entry.deflated        ? deflated(entry.content)
                                                          : entry.content;
        const auto checksum =
            crc32(0, reinterpret_cast<const Bytef*>(entry.content.constData()), uInt(entry.content.size()));
        const Written written = {entry,
                                 packed,
                                 entry.saidChecksum >= 0 ? quint32(entry.saidChecksum) : quint32(checksum),
                                 entry.saidSize >= 0 ? quint32(entry.saidSize)
                                                     : quint32(entry.content.size()),
                                 quint32(bytes.size() - prefix.size()),
                                 large};
        bytes += written.local();
        directory += written.central();
    }
    const auto offset = quint32(bytes.size() - prefix.size());
    const auto count = quint16(saidEntries >= 0 ? saidEntries : entries.size());
    bytes += directory;
    if (large)
        bytes += largeEnd(count, quint64(directory.size()), offset);
    return bytes + "PK\5\6" + little(quint16(0)) + little(quint16(0)) + little(count) + little(count) +
           little(quint32(directory.size())) + (large ? QByteArray(4, '\xff') : little(offset)) +
           little(quint16(comment.size())) + comment;
}

Documents::Documents()
    : packageRelationships(relationshipsXml({"rId1 officeDocument xl/workbook.xml"}))
    , workbook(header + "<workbook " + mainNamespace + " xmlns:r=\"" + relationshipNamespace +
               "\"><sheets><sheet name=\"Texts\" sheetId=\"1\" r:id=\"rId1\"/></sheets></workbook>")
    , workbookRelationships(
          relationshipsXml({"rId1 worksheet worksheets/sheet1.xml", "rId2 sharedStrings sharedStrings.xml"}))
    , sheet(sheetXml({}))
    , sharedStrings(stringsXml({}))
{}

QVector<Entry> Documents::entries() const
{
    QVector<Entry> entries = {{"[Content_Types].xml", header + "<Types/>"},
                              {"_rels/.rels", packageRelationships},
                              {"xl/workbook.xml", workbook},
                              {"xl/_rels/workbook.xml.rels", workbookRelationships},
                              {"xl/worksheets/sheet1.xml", sheet}};
    if (!sharedStrings.isEmpty())
        entries.append({"xl/sharedStrings.xml", sharedStrings});
    return entries;
}

QByteArray sheetXml(const QByteArray& rows)
{
    return header + "<worksheet " + mainNamespace + "><cols><col min=\"1\" max=\"2\"/></cols><sheetData>" +
           rows + "</sheetData><pageMargins left=\"1\"/></worksheet>";
}

QByteArray stringsXml(const QByteArray& items)
{
    return header + "<sst " + mainNamespace + ">" + items + "</sst>";
}

QByteArray relationshipsXml(const QVector<QByteArray>& relationships)
{
    QByteArray xml =
        header + "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">";
    for (const QByteArray& relationship : relationships) {
        const QList<QByteArray> words = relationship.split(' ');
        xml += "<Relationship Id=\"" + words[0] + "\" Type=\"" + relationshipNamespace + "/" + words[1] +
               "\" Target=\"" + words[2] + "\"/>";
    }
    return xml + "</Relationships>";
}

QByteArray cell(const QByteArray& reference, const QByteArray& text)
{
    const QByteArray place = reference.isEmpty() ? QByteArray() : " r=\"" + reference + "\"";
    return "<c" + place + " t=\"inlineStr\"><is><t>" + text + "</t></is></c>";
}

QByteArray sharedCell(const QByteArray& reference, int index)
{
    return "<c r=\"" + reference + "\" t=\"s\"><v>" + QByteArray::number(index) + "</v></c>";
}

QByteArray workbook(const QByteArray& rows, const QByteArray& sharedItems)
{
    Documents documents;
    documents.sheet = sheetXml(rows);
    documents.sharedStrings = stringsXml(sharedItems);
    return workbook(documents);
}

QByteArray workbook(const Documents& documents)
{
    return archive(documents.entries());
}

} // namespace WorkbookBytes
