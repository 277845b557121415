#pragma once

#include "utils/TranslationTable.h"

#include <QTranslator>

namespace Utils {

// Translates texts from a translation table (TranslationTable.h). A text that the table does not have, or has
// no translation for, stays as it is; disambiguations and plural forms are not distinguished.
class Translator final : public QTranslator
{
    Q_OBJECT

public:
    explicit Translator(QObject* parent = nullptr);
    ~Translator() override;

    // Reads the texts of one language from the table, in place of those read for it before; texts read for
    // other languages stay. False when there are none to be had: a table that is missing or has no such
    // language is passed over in silence, one that cannot be used is logged with the reason.
    bool loadFile(const QString& tablePath, const QString& language);
    // From now on texts are translated into this language, or not at all if nothing was read for it. Windows
    // that are open take no notice until they are sent QEvent::LanguageChange.
    void setCurrentLanguage(const QString& language);

    [[nodiscard]] QString translate(const char* context, const char* sourceText, const char* disambiguation,
                                    int n) const override;
    [[nodiscard]] bool isEmpty() const override;

private:
    QHash<QString, TranslationTable> m_languages; // by name, as languageKey() in the .cpp spells it
    TranslationTable m_current;
    QString m_currentKey;
};

} // namespace Utils
