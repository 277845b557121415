#pragma once

#include <QString>
#include <QStringList>

// The family of every text.
[[nodiscard]] QString interfaceFamily();

// The families that have the characters which the interface's own lacks, first come first served. A Han
// character has one code and several forms: the family of the reader's language comes first. `locale` is a
// locale's name, such as "ja" or "zh_CN"; an unknown one gives the usual order.
[[nodiscard]] QStringList fallbackFamilies(const QString& locale);

// Makes them the application's font, and tells the controls a weight that all of them have. Once, before any
// text is shown; when the families are loaded does not matter.
void useInterfaceFont(const QString& locale);
