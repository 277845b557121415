#pragma once

#include <QObject>
#include <QString>
#include <QVector>

namespace Controls {

// One unit of a quantity. `exponent` is the power of ten that leads to the base unit (GHz to Hz: 9), so that
// "2.4 GHz" becomes the double nearest to 2.4e9 without a rounding multiplication.
struct Unit
{
    QString text;
    int exponent = 0;
};

// A quantity that is edited: its value in the base unit, the units it can be typed in, and the moment at
// which an edit counts. The numeric keyboard writes to it; whoever opened the keyboard listens to it.
class BaseUnitAdapter : public QObject
{
    Q_OBJECT
    Q_PROPERTY(double currentValue READ currentValue WRITE setCurrentValue NOTIFY currentValueChanged)
    Q_PROPERTY(int commitMode READ commitMode CONSTANT)

public:
    // When a committed value is to be taken.
    enum CommitMode {
        OnAcceptance = 0,     // when the keyboard has been accepted: read currentValue
        OnEditingFinished = 2 // when editingFinished arrives
    };

    // `units` from the largest to the smallest; empty for a plain number.
    explicit BaseUnitAdapter(QVector<Unit> units, CommitMode commitMode = OnAcceptance,
                             QObject* parent = nullptr);
    ~BaseUnitAdapter() override;

    // In the base unit (the unit with exponent 0).
    [[nodiscard]] double currentValue() const { return m_currentValue; }
    void setCurrentValue(double value);

    [[nodiscard]] int commitMode() const { return m_commitMode; }
    [[nodiscard]] const QVector<Unit>& units() const { return m_units; }

    // Index of the unit with this text (exact), -1 if there is none.
    [[nodiscard]] int indexOfUnit(const QString& text) const;
    // Index of the largest unit in which |value| is at least 1; the smallest unit for smaller values,
    // the base unit for zero; -1 when there are no units.
    [[nodiscard]] int indexOfBestUnit(double value) const;

    // Takes a finished edit: stores the value and emits editingFinished once.
    void commit(double value);

signals:
    void currentValueChanged(double value);
    // The user has finished an edit with this value in the base unit; exactly once per commit.
    void editingFinished(double value);

private:
    QVector<Unit> m_units;
    CommitMode m_commitMode;
    double m_currentValue = 0.0;
};

} // namespace Controls
