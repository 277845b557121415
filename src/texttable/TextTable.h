#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>

// The translations as they are written by hand; the README tells the format.
struct TextTable
{
    QStringList headings;      // "Context", "Source", and the languages, each once
    QVector<QStringList> rows; // as long as the headings; escapes undone, no text twice

    // Reads the whole text. What is wrong with it and where ("line 7: ..."), empty if nothing is; then the
    // table is complete.
    [[nodiscard]] QString read(const QByteArray& utf8);
};
