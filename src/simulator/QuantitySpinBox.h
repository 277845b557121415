#pragma once

#include <QDoubleSpinBox>

#include <functional>
#include <optional>

namespace Simulator {

// A number field that shows and takes a quantity with its unit. A value is taken on Enter, on leaving the
// field and on a step; a text that is no quantity within the limits falls back to the value before it.
class QuantitySpinBox final : public QDoubleSpinBox
{
    Q_OBJECT

public:
    struct Quantity
    {
        double minimum;
        double maximum;
        double step;
        std::function<QString(double value)> format;
        // The second argument is the value shown last.
        std::function<std::optional<double>(const QString& text, double shown)> parse;
    };

    explicit QuantitySpinBox(const Quantity& quantity, QWidget* parent = nullptr);

protected:
    [[nodiscard]] QString textFromValue(double value) const override;
    [[nodiscard]] double valueFromText(const QString& text) const override;
    [[nodiscard]] QValidator::State validate(QString& text, int& position) const override;
    void fixup(QString& text) const override;

private:
    Quantity m_quantity;
};

} // namespace Simulator
