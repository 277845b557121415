#pragma once

#include "controls/InfoButton.h"

// An InfoButton with a second text, the value, in a child label "infoLabel". Two centred texts stand one
// above the other in the middle; otherwise the caption stands at the top and the value at the bottom, and in
// a button too low for two lines both share one line, of which the value takes what it needs first.
class LabelButton : public InfoButton
{
    Q_OBJECT
    Q_PROPERTY(QString labelText READ labelText WRITE setLabelText)
    Q_PROPERTY(Qt::Alignment labelAlignment READ labelAlignment WRITE setLabelAlignment)
    Q_PROPERTY(int captionLines READ captionLines WRITE setCaptionLines)

public:
    explicit LabelButton(QWidget* parent = nullptr);
    ~LabelButton() override;

    // The whole value text, however much of it is shown.
    [[nodiscard]] QString labelText() const;
    virtual void setLabelText(const QString& text);
    [[nodiscard]] Qt::Alignment labelAlignment() const;
    void setLabelAlignment(Qt::Alignment alignment);
    // At most so many lines; the button keeps room for all of them. One unless told otherwise.
    [[nodiscard]] int captionLines() const { return m_captionLines; }
    void setCaptionLines(int lines);
    // Where a value that does not fit is shortened; at its end unless told otherwise.
    void setLabelElideMode(Qt::TextElideMode mode);

protected:
    void arrange(const QRect& area) override;
    [[nodiscard]] QSize contentSize() const override;

private:
    Controls::ElidedLabel* m_infoLabel;
    int m_captionLines = 1;
};
