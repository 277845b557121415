#include "simulator/modulation/Within.h"

#include <QCoreApplication>

namespace Simulator {

Verdict WithinItem::settle(QLatin1String key, const QJsonObject& /*before*/)
{
    const double inner = number(m_pair.innerKey);
    const double outer = number(m_pair.outerKey);
    if (inner <= outer)
        return {};
    const auto translated = [](const char* text) { return QCoreApplication::translate("Simulator", text); };
    if (key == m_pair.outerKey)
        return invalid(translated("The %1 must not be shorter than the %2 (%3).")
                           .arg(translated(m_pair.outerName), translated(m_pair.innerName),
                                quantityText(inner, Unit::Seconds)));
    return invalid(translated("The %1 must not be longer than the %2 (%3).")
                       .arg(translated(m_pair.innerName), translated(m_pair.outerName),
                            quantityText(outer, Unit::Seconds)));
}

} // namespace Simulator
