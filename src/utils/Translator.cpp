#include "utils/Translator.h"

#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>

namespace Utils {
namespace {

Q_LOGGING_CATEGORY(lcUtils, "tarvinel.utils", QtWarningMsg)

// Names of languages are compared as headings are.
QString languageKey(const QString& language)
{
    return language.trimmed().toCaseFolded();
}

TranslationTable::Outcome readTable(const QString& path, const QString& language, TranslationTable& table,
                                    QString& problem)
{
    // Opening a pipe would wait for somebody to write into it.
    if (!QFileInfo(path).isFile()) {
        problem = QStringLiteral("it is no file");
        return TranslationTable::Outcome::Refused;
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        problem = file.errorString();
        return TranslationTable::Outcome::Refused;
    }
    return table.read(file, language, problem);
}

} // namespace

Translator::Translator(QObject* parent)
    : QTranslator(parent)
{}

Translator::~Translator() = default;

bool Translator::loadFile(const QString& tablePath, const QString& language)
{
    const QString key = languageKey(language);
    TranslationTable table;
    auto outcome = TranslationTable::Outcome::NoLanguage;
    if (QFileInfo::exists(tablePath)) {
        QString problem;
        outcome = readTable(tablePath, language, table, problem);
        if (outcome == TranslationTable::Outcome::Refused)
            qCWarning(lcUtils).noquote().nospace()
                << "The translation table \"" << tablePath << "\" is not used: " << problem;
        else if (outcome == TranslationTable::Outcome::NoLanguage)
            qCInfo(lcUtils) << "The translation table" << tablePath << "has no language" << language;
    }
    m_languages.insert(key, table);
    if (key == m_currentKey)
        m_current = table;
    return outcome == TranslationTable::Outcome::Read;
}

void Translator::setCurrentLanguage(const QString& language)
{
    m_currentKey = languageKey(language);
    m_current = m_languages.value(m_currentKey);
}

QString Translator::translate(const char* context, const char* sourceText, const char*, int) const
{
    return sourceText != nullptr ? m_current.find(context != nullptr ? context : "", sourceText) : QString();
}

bool Translator::isEmpty() const
{
    return m_current.count() == 0;
}

} // namespace Utils
