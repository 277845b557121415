#pragma once

#include <QStringList>

class EnumTextButton;

// Shows these items and item `index` of them as the current one; `otherwise`, with no item current, when
// there is no such item. A picker that shows all this already is not touched.
void showPickerItems(EnumTextButton* picker, const QStringList& items, int index,
                     const QString& otherwise = {});
