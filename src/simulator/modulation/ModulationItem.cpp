#include "simulator/modulation/ModulationItem.h"

#include "link/Keys.h"

#include <QCoreApplication>

#include <algorithm>

namespace Simulator {

namespace Actions = MinibarHelperProtocol::Actions;
namespace Errors = MinibarHelperProtocol::Errors;
namespace Keys = MinibarHelperProtocol::Keys;

namespace {

const QLatin1String vocabulary[] = {
    Actions::set_field,         Actions::set_default_trim, Actions::set_discrete_mode,
    Actions::set_enabled_tones, Actions::select_file,      Actions::clear_file,
};

constexpr int longestQuote = 40;

QString translated(const char* text)
{
    return QCoreApplication::translate("Simulator", text);
}

} // namespace

ModulationItem::ModulationItem(const Names& names, const FieldTable& fields)
    : m_names(names)
    , m_fields(fields)
{
    for (const Field& field : fields)
        m_state.insert(field.key, field.initial);
}

Verdict ModulationItem::perform(const QString& action, const QJsonObject& arguments)
{
    if (action == Actions::set_field)
        return setField(arguments);
    if (std::find(std::begin(vocabulary), std::end(vocabulary), action) == std::end(vocabulary))
        return invalid(translated("The action '%1' is not known.").arg(action.left(longestQuote)));
    return act(action, arguments);
}

Verdict ModulationItem::act(const QString& action, const QJsonObject& /*arguments*/)
{
    return notSupported(translated("The action '%1' is not for %2.").arg(action, m_names.name));
}

Verdict ModulationItem::setField(const QJsonObject& arguments)
{
    const QJsonValue key = arguments.value(Keys::key);
    if (!key.isString())
        return invalid(translated("'%1' must be a text.").arg(Keys::key));
    const auto field = std::find_if(m_fields.cbegin(), m_fields.cend(),
                                    [&key](const Field& row) { return row.key == key.toString(); });
    if (field == m_fields.cend())
        return invalid(
            translated("%1 has no field '%2'.").arg(m_names.name, key.toString().left(longestQuote)));
    const QJsonValue value = arguments.value(Keys::value);
    const Field now = fieldNow(*field);
    if (now.type == Field::Type::Fixed)
        return notSupported(faultOf(value, now));
    const QString lock = lockOf(now.key);
    if (!lock.isEmpty())
        return notSupported(lock);
    const QString fault = faultOf(value, now);
    if (!fault.isEmpty())
        return invalid(fault);
    const QJsonObject before = m_state;
    m_state.insert(now.key, value);
    return settle(now.key, before);
}

Refusal ModulationItem::invalid(const QString& sentence)
{
    return {Errors::INVALID_ARG, sentence};
}

Refusal ModulationItem::notSupported(const QString& sentence)
{
    return {Errors::NOT_SUPPORTED, sentence};
}

} // namespace Simulator
