#pragma once

#include "controls/BaseUnitAdapter.h"
#include "controls/Quantities.h"
#include "controls/TouchNumKeyboard.h"

#include <QAbstractButton>
#include <QLabel>
#include <QPointer>
#include <QTest>
#include <memory>

// A numeric keyboard opened for a test.
namespace OpenedKeyboard {

using Controls::BaseUnitAdapter;
using Controls::NumericEntry;
using Controls::TouchNumKeyboard;

// The value 2.4 GHz, 9 kHz to 6 GHz, step 1 MHz.
inline NumericEntry frequencyEntry()
{
    NumericEntry entry;
    entry.title = QStringLiteral("Frequency");
    entry.value = 2.4e9;
    entry.step = 1e6;
    entry.minimum = 9e3;
    entry.maximum = 6e9;
    return entry;
}

// An open keyboard and what comes out of it.
class Opened
{
public:
    explicit Opened(const NumericEntry& entry = frequencyEntry(),
                    const QVector<Controls::Unit>& units = Quantities::frequency())
    {
        auto owned = std::make_unique<BaseUnitAdapter>(units);
        adapter = owned.get();
        keyboard = new TouchNumKeyboard(std::move(owned), entry, nullptr);
        QObject::connect(adapter, &BaseUnitAdapter::editingFinished, adapter,
                         [this](double value) { committed.append(value); });
        QObject::connect(keyboard, &QDialog::finished, keyboard,
                         [this](int result) { results.append(result); });
        keyboard->open();
    }
    ~Opened() { delete keyboard; }

    [[nodiscard]] bool isReady() const { return QTest::qWaitForWindowActive(keyboard); }
    [[nodiscard]] QAbstractButton* key(const QString& name) const
    {
        return keyboard->findChild<QAbstractButton*>(name);
    }
    void click(const QString& name) const { QTest::mouseClick(key(name), Qt::LeftButton); }
    void type(const char* text) const { QTest::keyClicks(focused(), QString::fromUtf8(text)); }
    void press(Qt::Key which, Qt::KeyboardModifiers modifiers = {}) const
    {
        QTest::keyClick(focused(), which, modifiers);
    }
    [[nodiscard]] QWidget* focused() const
    {
        return keyboard && keyboard->focusWidget() ? keyboard->focusWidget() : keyboard.data();
    }
    [[nodiscard]] QString text(const char* label) const
    {
        return keyboard->findChild<QLabel*>(QLatin1String(label))->text();
    }
    [[nodiscard]] QString shown() const
    {
        return QString(text("valueLabel") + QLatin1Char(' ') + text("unitLabel")).trimmed();
    }
    [[nodiscard]] bool wasRejected() const
    {
        return committed.isEmpty() && results == QVector<int>{QDialog::Rejected};
    }
    [[nodiscard]] bool hasCommitted(double value) const
    {
        return committed == QVector<double>{value} && results == QVector<int>{QDialog::Accepted} &&
               adapter->currentValue() == value;
    }

    QPointer<TouchNumKeyboard> keyboard;
    BaseUnitAdapter* adapter;
    QVector<double> committed;
    QVector<int> results;
};

} // namespace OpenedKeyboard
