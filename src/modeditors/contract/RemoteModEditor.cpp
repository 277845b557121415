#include "modeditors/contract/RemoteModEditor.h"

#include <cmath>

RemoteModEditor::RemoteModEditor(QWidget* parent)
    : QWidget(parent)
{}

RemoteModEditor::~RemoteModEditor() = default;

void RemoteModEditor::applyNumericValue(const QString& key, double value)
{
    NumericFieldSpec spec;
    // JSON has no word for NaN and the infinities.
    if (!std::isfinite(value) || !describeNumericField(key, spec)) {
        return;
    }
    editField(key, spec.integerOnly ? std::round(value) : value);
}

void RemoteModEditor::editField(const QString& key, const QJsonValue& value)
{
    emit actionEdited(QStringLiteral("set-field"),
                      {{QStringLiteral("key"), key}, {QStringLiteral("value"), value}});
}
