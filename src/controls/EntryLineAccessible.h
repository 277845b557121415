#pragma once

#include <QAccessibleWidget>

namespace Controls {

class EntryLine;

// The value line as assistive programs see it: an editable text "2.4 GHz", named by the title and described
// by what stands under it. It is read here and edited with keys.
class EntryLineAccessible final : public QAccessibleWidget, public QAccessibleTextInterface
{
public:
    explicit EntryLineAccessible(QWidget* line);

    // Makes EntryLine known to the accessibility layer; any number of times.
    static void install();

    [[nodiscard]] QString text(QAccessible::Text kind) const override;
    [[nodiscard]] QAccessible::State state() const override;
    [[nodiscard]] int childCount() const override { return 0; }
    void* interface_cast(QAccessible::InterfaceType type) override;

    void selection(int index, int* start, int* end) const override;
    [[nodiscard]] int selectionCount() const override;
    void addSelection(int, int) override {}
    void removeSelection(int) override {}
    void setSelection(int, int, int) override {}
    [[nodiscard]] int cursorPosition() const override;
    void setCursorPosition(int) override {}
    [[nodiscard]] QString text(int start, int end) const override;
    [[nodiscard]] int characterCount() const override;
    [[nodiscard]] QRect characterRect(int offset) const override;
    [[nodiscard]] int offsetAtPoint(const QPoint& point) const override;
    void scrollToSubstring(int, int) override {}
    QString attributes(int offset, int* start, int* end) const override;

private:
    [[nodiscard]] const EntryLine& line() const;
};

} // namespace Controls
