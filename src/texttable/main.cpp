#include "texttable/TableWorkbook.h"
#include "texttable/TextTable.h"

#include <QFile>

#include <cstdio>

namespace {

int fail(const QString& sentence)
{
    std::fprintf(stderr, "make_translation_table: %s\n", qPrintable(sentence));
    return 1;
}

} // namespace

int main(int argc, char* argv[])
{
    if (argc != 3)
        return fail(QStringLiteral("usage: make_translation_table TABLE.tsv WORKBOOK.xlsx"));
    const QString from = QFile::decodeName(argv[1]);
    const QString to = QFile::decodeName(argv[2]);
    QFile source(from);
    if (!source.open(QIODevice::ReadOnly))
        return fail(from + QLatin1String(": ") + source.errorString());
    TextTable table;
    QString problem = table.read(source.readAll());
    if (!problem.isEmpty())
        return fail(from + QLatin1String(", ") + problem);
    problem = writeWorkbook(table, to);
    return problem.isEmpty() ? 0 : fail(to + QLatin1String(": ") + problem);
}
