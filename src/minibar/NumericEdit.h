#pragma once

#include "business/PropertyBindingHelper.h"
#include "minibar/TurnMark.h"

#include <QObject>
#include <functional>

class QWidget;

namespace Controls {
class TouchNumKeyboard;
}

// The one numeric keyboard edit that can be under way. It opens the keyboard beside a button and hands the
// entered value over exactly once, at the moment that the value's adapter calls for; a cancelled or
// superseded edit hands over nothing.
class NumericEdit final : public QObject
{
    Q_OBJECT

public:
    // Takes the entered value, in the adapter's base unit.
    using Commit = std::function<void(double value)>;
    // The edit is over: accepted, rejected, cancelled or superseded.
    using Ended = std::function<void()>;

    explicit NumericEdit(QObject* parent = nullptr);
    ~NumericEdit() override;

    // Opens the keyboard, after cancelling an edit that is still under way. The call returns at once.
    void open(QWidget* anchor, const PropertyBindingHelper::NumericKeyboardConfig& config,
              const Commit& commit, Ended ended = nullptr);
    // Rejects the keyboard if one is open.
    void cancel();

    [[nodiscard]] bool isOpen() const { return m_keyboard != nullptr; }
    // The keyboard has closed within this turn of the event loop.
    [[nodiscard]] bool hasJustClosed() const { return m_justClosed.isSet(); }
    // True for the open keyboard and everything in it.
    [[nodiscard]] bool owns(const QObject* object) const;

private:
    // Ends the edit if this is its keyboard, which from then on is nobody's. False for any other keyboard.
    bool forget(const Controls::TouchNumKeyboard* keyboard);

    Controls::TouchNumKeyboard* m_keyboard = nullptr; // its `destroyed` clears it
    Ended m_ended;
    TurnMark m_justClosed;
};
