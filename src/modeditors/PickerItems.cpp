#include "modeditors/PickerItems.h"

#include "controls/EnumTextButton.h"

void showPickerItems(EnumTextButton* picker, const QStringList& items, int index, const QString& otherwise)
{
    if (picker->enums() != items) {
        picker->setEnums(items);
    }
    if (index >= 0 && index < items.size()) {
        if (picker->currentEnum() != index) {
            picker->setCurrentEnum(index);
        }
    } else if (picker->currentEnum() >= 0 || picker->labelText() != otherwise) {
        picker->setLabelText(otherwise);
    }
}
