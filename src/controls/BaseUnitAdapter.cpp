#include "controls/BaseUnitAdapter.h"

#include "utils/Decimal.h"

#include <cmath>
#include <utility>

namespace Controls {

BaseUnitAdapter::BaseUnitAdapter(QVector<Unit> units, CommitMode commitMode, QObject* parent)
    : QObject(parent)
    , m_units(std::move(units))
    , m_commitMode(commitMode)
{}

BaseUnitAdapter::~BaseUnitAdapter() = default;

void BaseUnitAdapter::setCurrentValue(double value)
{
    const bool bothNaN = std::isnan(value) && std::isnan(m_currentValue);
    if (bothNaN || value == m_currentValue) {
        return;
    }
    m_currentValue = value;
    emit currentValueChanged(value);
}

int BaseUnitAdapter::indexOfUnit(const QString& text) const
{
    for (int i = 0; i < m_units.size(); ++i) {
        if (m_units.at(i).text == text) {
            return i;
        }
    }
    return -1;
}

int BaseUnitAdapter::indexOfBestUnit(double value) const
{
    const int smallest = m_units.size() - 1;
    const bool hasMagnitude = std::isfinite(value) && value != 0.0;
    // Decimal digits instead of a comparison with powers of ten: 1e-12 has no exact double.
    const int magnitude = hasMagnitude ? Utils::shortestDecimal(value).pointPosition - 1 : 0;
    for (int i = 0; i < m_units.size(); ++i) {
        const int exponent = m_units.at(i).exponent;
        if (hasMagnitude ? exponent <= magnitude : exponent == 0) {
            return i;
        }
    }
    return smallest;
}

void BaseUnitAdapter::commit(double value)
{
    setCurrentValue(value);
    emit editingFinished(value);
}

} // namespace Controls
