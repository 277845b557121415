#include "utils/TranslationTable.h"

#include "utils/workbook/ReadSheet.h"

namespace Utils {
namespace {

constexpr qint64 largestTable = 16 * qint64(1024) * 1024; // bytes of the texts that are kept

// No text and no context has a zero byte in it.
QByteArray keyOf(const QByteArray& context, const QByteArray& source)
{
    QByteArray key;
    key.reserve(context.size() + 1 + source.size());
    return key.append(context).append('\0').append(source);
}

// Finds the headings, then picks the texts of the language.
class LanguageColumn final : public Workbook::RowTaker
{
public:
    LanguageColumn(const QString& language, QHash<QByteArray, QString>& texts)
        : m_language(language)
        , m_texts(texts)
    {}
    [[nodiscard]] bool hasHeadings() const { return m_source >= 0; }
    [[nodiscard]] bool hasLanguage() const { return m_translation >= 0; }

    [[nodiscard]] bool wantsColumn(int column) const override
    {
        if (!hasHeadings())
            return true;
        return hasLanguage() && (column == m_context || column == m_source || column == m_translation);
    }
    [[nodiscard]] QString takeRow(const Workbook::Row& row) override
    {
        return hasHeadings() ? takeText(row) : takeHeadings(row);
    }

private:
    QString takeHeadings(const Workbook::Row& row)
    {
        const auto columnOf = [&row](const QString& heading) {
            for (int column = 0; column < row.size(); ++column)
                if (!heading.isEmpty() && row[column].trimmed().compare(heading, Qt::CaseInsensitive) == 0)
                    return column;
            return -1;
        };
        m_context = columnOf(QStringLiteral("Context"));
        m_source = columnOf(QStringLiteral("Source"));
        m_translation = columnOf(m_language.trimmed());
        return m_context >= 0 && m_source >= 0
                   ? QString()
                   : QStringLiteral("its first row has no headings \"Context\" and \"Source\"");
    }

    QString takeText(const Workbook::Row& row)
    {
        const QByteArray source = row.value(m_source).toUtf8();
        if (source.isEmpty() || !hasLanguage())
            return {};
        const QByteArray key = keyOf(row.value(m_context).trimmed().toUtf8(), source);
        if (m_texts.contains(key))
            return {};
        const QString text = row.value(m_translation);
        m_size += key.size() + text.size() * qint64(sizeof(QChar));
        if (m_size > largestTable)
            return QStringLiteral("its texts are more than 16 MiB");
        m_texts.insert(key, text);
        return {};
    }

    QString m_language;
    QHash<QByteArray, QString>& m_texts;
    int m_context = -1; // columns; -1 as long as they are not known
    int m_source = -1;
    int m_translation = -1;
    qint64 m_size = 0;
};

} // namespace

TranslationTable::Outcome TranslationTable::read(QIODevice& device, const QString& language, QString& problem)
{
    m_texts.clear();
    LanguageColumn column(language, m_texts);
    problem = Workbook::readSheet(device, language, column);
    if (problem.isEmpty() && !column.hasHeadings())
        problem = QStringLiteral("its sheet is empty");
    if (!problem.isEmpty()) {
        m_texts.clear();
        return Outcome::Refused;
    }
    return column.hasLanguage() ? Outcome::Read : Outcome::NoLanguage;
}

QString TranslationTable::find(const char* context, const char* source) const
{
    const QByteArray text = QByteArray::fromRawData(source, static_cast<int>(qstrlen(source)));
    const QByteArray place = QByteArray::fromRawData(context, static_cast<int>(qstrlen(context)));
    const auto own = m_texts.constFind(keyOf(place, text));
    return own != m_texts.constEnd() ? *own : m_texts.value(keyOf({}, text));
}

} // namespace Utils
