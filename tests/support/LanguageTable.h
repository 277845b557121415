#pragma once

#include <QFile>
#include <QSet>
#include <QString>

namespace TestSupport {

// The texts that the table of translations has, spelt as RecordingTranslator spells them: "context|text".
// Line breaks and tabs stay escaped. Empty if there is no table in the folder.
inline QSet<QString> translatableTexts(const QString& configurationFolder)
{
    QSet<QString> texts;
    QFile table(configurationFolder + QStringLiteral("/Language.tsv"));
    if (table.open(QIODevice::ReadOnly)) {
        while (!table.atEnd()) {
            const QString line = QString::fromUtf8(table.readLine());
            texts.insert(line.section(QLatin1Char('\t'), 0, 1).replace(QLatin1Char('\t'), QLatin1Char('|')));
        }
    }
    return texts;
}

} // namespace TestSupport
