#pragma once

#include "system/BarView.h"

#include <functional>

// The modulation popup of a real helper: the editor of one item, found and used as its user does.
class EditorView final
{
public:
    // What a user can do to a control.
    enum Gesture {
        Type,   // click its button, type a text on the keyboard that opens, Return
        Choose, // click it and then an item of its list: the first of four is "1/4"
        Switch, // click the half that has the text
        Click   // click it
    };

    // Both must outlive the view.
    EditorView(BarView& bar, const TestSupport::Accessibility& accessibility);

    // By a click on the bar's button and one on a line of its menu, from 0 on; `title` is the item's text.
    // The bar is expanded and nothing is open but, perhaps, another editor.
    [[nodiscard]] bool open(int line, int lines, const QString& title);
    // The editor that has been opened last; empty for none.
    [[nodiscard]] const QString& title() const { return m_title; }

    // The first thing of the popup, in reading order, that is showing and has this name; waits for it.
    [[nodiscard]] std::optional<TestSupport::AccessibleNode> find(const QString& name) const;
    // The middle of a table's cell, by the caption of its column and the text of another cell of its row.
    [[nodiscard]] QPoint cell(const QString& column, const QString& row) const;
    // The rows of the table, their cells joined by " | ".
    [[nodiscard]] QStringList tableRows() const;
    // The row of a list whose text begins so.
    [[nodiscard]] QRect listRow(const QString& beginning) const;
    // A value; "on" or "off" of what can be switched; with " (locked)" when it cannot be used.
    [[nodiscard]] QString shown(const QString& name) const;
    [[nodiscard]] bool waitForShown(const QString& name, const QString& text) const;
    [[nodiscard]] bool click(const QString& name) const;

    // Takes what lies at `from` to another place of the popup.
    [[nodiscard]] bool dragRow(const QPoint& from, const QPoint& to) const;
    // Does it, until whatever it has opened is gone again.
    [[nodiscard]] bool perform(Gesture gesture, const QString& name, const QString& text);

private:
    [[nodiscard]] std::optional<TestSupport::AccessibleNode>
    find(const std::function<bool(const TestSupport::AccessibleNode&)>& wanted) const;
    [[nodiscard]] bool type(const QString& name, const QString& text);
    [[nodiscard]] bool choose(const QString& name, const QString& ordinal) const;
    [[nodiscard]] bool clickHalf(const QString& name, const QString& half) const;

    BarView& m_bar;
    const TestSupport::Accessibility& m_accessibility;
    QString m_title;
};
