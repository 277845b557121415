#pragma once

#include <QSet>
#include <QString>
#include <QTranslator>

namespace TestSupport {

// Makes every text twice as long, as a language may.
class DoublingTranslator final : public QTranslator
{
public:
    [[nodiscard]] QString translate(const char*, const char* source, const char*, int) const override
    {
        const QString text = QString::fromUtf8(source);
        return text.isEmpty() ? text : text + QLatin1Char(' ') + text;
    }
    [[nodiscard]] bool isEmpty() const override { return false; }
};

// Leaves every text as it is and remembers what was asked for, as "context|text".
class RecordingTranslator final : public QTranslator
{
public:
    [[nodiscard]] QString translate(const char* context, const char* source, const char*, int) const override
    {
        asked.insert(QString::fromUtf8(context) + QLatin1Char('|') + QString::fromUtf8(source));
        return {};
    }
    [[nodiscard]] bool isEmpty() const override { return false; }

    mutable QSet<QString> asked;
};

} // namespace TestSupport
