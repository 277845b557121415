#include "minibar/NumericEdit.h"

#include "controls/BaseUnitAdapter.h"
#include "controls/TouchNumKeyboard.h"

#include <QPointer>
#include <utility>

using Controls::BaseUnitAdapter;
using Controls::TouchNumKeyboard;

NumericEdit::NumericEdit(QObject* parent)
    : QObject(parent)
{}

NumericEdit::~NumericEdit()
{
    // The keyboard belongs to a window that may outlive this object.
    if (m_keyboard)
        m_keyboard->disconnect(this);
}

void NumericEdit::open(QWidget* anchor, const PropertyBindingHelper::NumericKeyboardConfig& config,
                       const Commit& commit, Ended ended)
{
    cancel();

    TouchNumKeyboard* const keyboard = PropertyBindingHelper::prepareNumericKeyBoard(anchor, config);
    if (!keyboard)
        return;
    keyboard->setWindowTitle(config.title);
    m_keyboard = keyboard;
    m_ended = std::move(ended);

    const QPointer<BaseUnitAdapter> adapter = qobject_cast<BaseUnitAdapter*>(keyboard->receiver());
    if (adapter) {
        connect(adapter, &BaseUnitAdapter::editingFinished, this,
                [this, keyboard, adapter, commit](double value) {
                    if (m_keyboard == keyboard && adapter &&
                        adapter->commitMode() == BaseUnitAdapter::OnEditingFinished)
                        commit(value);
                });
    }
    connect(keyboard, &QDialog::finished, this, [this, keyboard, adapter, commit](int result) {
        if (!forget(keyboard))
            return;
        if (result == QDialog::Accepted && adapter &&
            adapter->commitMode() != BaseUnitAdapter::OnEditingFinished)
            commit(adapter->currentValue());
    });
    connect(keyboard, &QObject::destroyed, this, [this, keyboard] { forget(keyboard); });
    keyboard->open();
}

void NumericEdit::cancel()
{
    TouchNumKeyboard* const keyboard = m_keyboard;
    if (forget(keyboard))
        keyboard->reject();
}

bool NumericEdit::owns(const QObject* object) const
{
    for (; m_keyboard && object; object = object->parent()) {
        if (object == m_keyboard)
            return true;
    }
    return false;
}

bool NumericEdit::forget(const TouchNumKeyboard* keyboard)
{
    if (!m_keyboard || m_keyboard != keyboard)
        return false;
    m_keyboard = nullptr;
    m_justClosed.set();
    if (const Ended ended = std::exchange(m_ended, nullptr))
        ended();
    return true;
}
