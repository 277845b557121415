// The table of translations. The first byte says what the rest is: a whole archive, or one document of a
// workbook whose archive is sound.

#include "fuzz/Fuzzing.h"
#include "utils/TranslationTable.h"
#include "utils/workbook/WorkbookBytes.h"

#include <QBuffer>

using Fuzzing::require;
using Utils::TranslationTable;

namespace {

QByteArray archiveOf(unsigned sort, const QByteArray& bytes)
{
    WorkbookBytes::Documents documents;
    switch (sort % 5) {
    case 0:
        return bytes;
    case 1:
        documents.sheet = bytes;
        break;
    case 2:
        documents.sharedStrings = bytes;
        break;
    case 3:
        documents.workbook = bytes;
        break;
    default:
        documents.workbookRelationships = bytes;
        break;
    }
    return WorkbookBytes::workbook(documents);
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0) {
        return 0;
    }
    QByteArray archive = archiveOf(data[0], Fuzzing::bytes(data + 1, size - 1));
    QBuffer device(&archive);
    require(device.open(QIODevice::ReadOnly), "a buffer can be opened");
    TranslationTable table;
    QString problem;
    const TranslationTable::Outcome outcome = table.read(device, QStringLiteral("German"), problem);
    const bool refused = outcome == TranslationTable::Outcome::Refused;
    require(refused == !problem.isEmpty(), "a refusal says why, and nothing else does");
    require(outcome == TranslationTable::Outcome::Read || table.count() == 0, "only what was read is kept");
    (void)table.find("Bar", "Level");
    return 0;
}
