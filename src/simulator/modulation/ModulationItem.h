#pragma once

#include "simulator/instrument/Refusal.h"
#include "simulator/modulation/Field.h"

#include <QJsonObject>

#include <memory>

namespace Simulator {

// One modulation function of the instrument: what it is set to, what it can do, and what it makes of an
// action. A value: the bank tries an action on a copy and keeps the copy when nothing was refused.
class ModulationItem
{
public:
    struct Names
    {
        QLatin1String id;   // also the word of its editor
        QLatin1String name; // short, for a menu
        QLatin1String text; // a title
    };

    virtual ~ModulationItem() = default;
    ModulationItem& operator=(const ModulationItem&) = delete;
    [[nodiscard]] virtual std::unique_ptr<ModulationItem> clone() const = 0;

    [[nodiscard]] const Names& names() const { return m_names; }
    [[nodiscard]] const QJsonObject& state() const { return m_state; }
    [[nodiscard]] virtual QJsonObject profile() const { return {}; }

    // Carries out an action of the editor. After a refusal the item is in no state to be kept.
    [[nodiscard]] Verdict perform(const QString& action, const QJsonObject& arguments);
    // Why it cannot be switched on, as a sentence; empty when it can.
    [[nodiscard]] virtual QString reasonToStayOff() const { return {}; }
    // Something that the last action began and that `work` ends.
    [[nodiscard]] virtual bool hasWork() const { return false; }
    virtual void work() {}

protected:
    // fields: must outlive the item.
    ModulationItem(const Names& names, const FieldTable& fields);
    ModulationItem(const ModulationItem&) = default;

    [[nodiscard]] double number(QLatin1String key) const { return m_state.value(key).toDouble(); }
    [[nodiscard]] QString word(QLatin1String key) const { return m_state.value(key).toString(); }
    void put(QLatin1String key, const QJsonValue& value) { m_state.insert(key, value); }

    // The field with the limits and options of the moment.
    [[nodiscard]] virtual Field fieldNow(const Field& field) const { return field; }
    // Why the field cannot be set now, as a sentence; empty when it can.
    [[nodiscard]] virtual QString lockOf(QLatin1String /*key*/) const { return {}; }
    // Called when the field has its new value: what depends on it follows, or the value is refused after all.
    [[nodiscard]] virtual Verdict settle(QLatin1String /*key*/, const QJsonObject& /*before*/) { return {}; }
    // An action of the vocabulary other than set-field.
    [[nodiscard]] virtual Verdict act(const QString& action, const QJsonObject& arguments);

    [[nodiscard]] static Refusal invalid(const QString& sentence);
    [[nodiscard]] static Refusal notSupported(const QString& sentence);

private:
    [[nodiscard]] Verdict setField(const QJsonObject& arguments);

    Names m_names;
    const FieldTable& m_fields;
    QJsonObject m_state;
};

// Base of the kinds: gives them their clone.
template <typename Item>
class ModulationItemOf : public ModulationItem
{
public:
    using ModulationItem::ModulationItem;

    [[nodiscard]] std::unique_ptr<ModulationItem> clone() const final
    {
        return std::make_unique<Item>(static_cast<const Item&>(*this));
    }
};

// A kind whose fields do not depend on each other.
class PlainItem final : public ModulationItemOf<PlainItem>
{
public:
    PlainItem(const Names& names, const FieldTable& fields)
        : ModulationItemOf(names, fields)
    {}
};

} // namespace Simulator
