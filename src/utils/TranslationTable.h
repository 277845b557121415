#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>

class QIODevice;

namespace Utils {

// The texts of one language, by context and source text, from a translation table: a workbook with a sheet of
// the language's name, or else the language in its first sheet. The sheet has a row of headings "Context",
// "Source" and one name of a language each, and a row for each text.
//
// The headings may stand in any column and any order, the first row that is not empty is theirs; upper and
// lower case are one there, and so are blanks around a heading. Of several rows for one text the first
// counts. A row without a context serves every context that has no row of its own for the text.
class TranslationTable final
{
public:
    // What reading came to.
    enum class Outcome { Read, NoLanguage, Refused };

    // Reads the column of one language, in place of what was here; other languages are not kept. After
    // `Refused` the table is empty, and `problem` says why in words that follow the table's name. The device
    // is open for reading and can be positioned.
    [[nodiscard]] Outcome read(QIODevice& device, const QString& language, QString& problem);

    // The translation, null where there is none. Both are UTF-8.
    [[nodiscard]] QString find(const char* context, const char* source) const;

    [[nodiscard]] int count() const { return m_texts.size(); }

private:
    QHash<QByteArray, QString> m_texts; // by context and source; empty ones hide those without a context
};

} // namespace Utils
