#include "formeditors/FormTables.h"

#include "business/UnitAdapters.h"
#include "formeditors/RemoteFormEditor.h"

#include <QCoreApplication>

namespace {

QString unitType(Quantity quantity)
{
    switch (quantity) {
    case Quantity::Frequency:
        return Adapters::FrequencyUnitAdapter::adapterType();
    case Quantity::Time:
        return Adapters::TimeUnitAdapter::adapterType();
    case Quantity::Number:
    case Quantity::Integer:
        break;
    }
    return {};
}

} // namespace

NumericFieldSpec NumericField::spec(const char* context) const
{
    NumericFieldSpec spec;
    spec.describe(QLatin1String(key), QCoreApplication::translate(context, title), 0, step, decimals,
                  quantity == Quantity::Integer);
    spec.unitType = unitType(quantity);
    spec.auxText = QLatin1String(tag);
    if (minimum) {
        spec.setMinimum(*minimum);
    }
    if (maximum) {
        spec.setMaximum(*maximum);
    }
    return spec;
}

int NumericField::displayMode() const
{
    switch (quantity) {
    case Quantity::Frequency:
        return RemoteFormEditor::Frequency;
    case Quantity::Time:
        return RemoteFormEditor::TimeSpan;
    case Quantity::Number:
    case Quantity::Integer:
        break;
    }
    return RemoteFormEditor::PlainNumber;
}

QList<QJsonValue> Choices::values() const
{
    QList<QJsonValue> values;
    for (std::size_t i = 0; i < m_count; ++i) {
        values.append(m_words ? QJsonValue(QLatin1String(m_words[i].value)) : QJsonValue(m_numbers[i]));
    }
    return values;
}

QStringList Choices::texts(const char* context) const
{
    QStringList texts;
    for (std::size_t i = 0; i < m_count; ++i) {
        texts.append(m_words ? QCoreApplication::translate(context, m_words[i].text)
                             : QString::number(m_numbers[i]));
    }
    return texts;
}
