#pragma once

#include <QFrame>
#include <QLabel>

namespace Controls {

class NumberEntry;

// The number of an entry with its selection and its cursor, as large as the room allows.
class EntryLabel final : public QLabel
{
    Q_OBJECT

public:
    explicit EntryLabel(QWidget* parent);

    void display(const QString& text, int cursor, bool selected);
    [[nodiscard]] int cursor() const { return m_cursor; }
    [[nodiscard]] bool isSelected() const { return m_selected; }
    // The position between two characters that is nearest to x.
    [[nodiscard]] int positionAt(int x) const;
    // The font in use: smaller for a long number, so that nothing is cut.
    [[nodiscard]] QFont fittingFont() const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] int textLeft(const QFontMetrics& metrics) const;

    int m_cursor = 0;
    bool m_selected = false;
};

// The value line of the numeric keyboard: the number ("valueLabel") and right of it the unit ("unitLabel") on
// one base line. It takes the focus and leaves every key to its parent. Assistive programs see an editable
// text.
class EntryLine final : public QFrame
{
    Q_OBJECT

public:
    // `title` names the line for assistive programs.
    EntryLine(const QString& title, QWidget* parent);

    void display(const NumberEntry& entry);
    [[nodiscard]] const EntryLabel& number() const { return *m_number; }
    // As it is read out: "2.4 GHz".
    [[nodiscard]] const QString& quantityText() const { return m_quantityText; }

signals:
    void cursorWanted(int position);
    void selectAllWanted();
    void selectionPasteWanted();

protected:
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void arrange();

    EntryLabel* m_number;
    QLabel* m_unit;
    QString m_quantityText;
};

} // namespace Controls
