#pragma once

#include "controls/TellThenPaint.h"

#include <QAbstractButton>
#include <QColor>
#include <QFont>
#include <QString>
#include <QVector>

namespace Controls {
class ElidedLabel;
}

// A large flat button with a text in a child label "textLabel". A text that does not fit is elided and the
// whole text becomes the tool tip, unless the button has a tool tip of its own. Space and Enter press it. Its
// labels carry the checked state as their property "parentChecked", for style sheets. A read-only button
// shows its texts in a frame and follows neither pointer nor keys.
// In the global namespace because style sheets select it by name.
class InfoButton : public Controls::TellThenPaint<QAbstractButton>
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text WRITE setText)
    Q_PROPERTY(bool readOnly READ isReadOnly WRITE setReadOnly)
    Q_PROPERTY(QColor pressedColor READ pressedColor WRITE setPressedColor)
    Q_PROPERTY(Qt::Alignment textAlignment READ textAlignment WRITE setTextAlignment)

public:
    explicit InfoButton(QWidget* parent = nullptr);
    ~InfoButton() override;

    // The whole text, however much of it is shown.
    [[nodiscard]] QString text() const;
    void setText(const QString& text);
    [[nodiscard]] bool isReadOnly() const { return m_readOnly; }
    void setReadOnly(bool readOnly);
    // Fills the button while it is held down, where the style sheet nearest to it leaves no room for a rule
    // of its own; invalid for nothing.
    [[nodiscard]] QColor pressedColor() const { return m_pressedColor; }
    void setPressedColor(const QColor& color);
    [[nodiscard]] Qt::Alignment textAlignment() const;
    void setTextAlignment(Qt::Alignment alignment);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    // A further label of the button, laid out by arrange(). It does not take part in mouse handling.
    Controls::ElidedLabel* addLabel(const QString& objectName, Qt::Alignment alignment);
    [[nodiscard]] Controls::ElidedLabel* textLabel() const { return m_textLabel; }

    // All texts stand in the middle, as on the bar.
    [[nodiscard]] bool isCentred() const;

    // The label's font as long as no style sheet says otherwise.
    static void setLabelFont(Controls::ElidedLabel* label, int pixelSize, QFont::Weight weight);

    // Gives the labels their places inside `area`.
    virtual void arrange(const QRect& area);
    // What the labels want, without the inset around them.
    [[nodiscard]] virtual QSize contentSize() const;

    // To be called when a text or an alignment has changed. Nothing is done while nobody can see it.
    void rearrange();

    [[nodiscard]] bool hitButton(const QPoint& position) const override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

private:
    void arrangeNow();
    void tellLabels(bool checked);
    void tellCutTexts();

    QVector<Controls::ElidedLabel*> m_labels;
    Controls::ElidedLabel* m_textLabel;
    QString m_cutTexts; // the tool tip that stands for texts that are cut; empty when all fit
    QColor m_pressedColor;
    bool m_readOnly = false;
    bool m_focusByKeyboard = false;
    bool m_arranging = false; // polishing the labels changes their metrics
};
