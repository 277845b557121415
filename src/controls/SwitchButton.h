#pragma once

#include <QString>
#include <QWidget>

class QBoxLayout;

namespace Controls {
class ElidedLabel;
class SwitchHalf;
} // namespace Controls

// A switch of two halves with words, the push buttons "btnOn" and "btnOff", under or beside a caption (a
// QLabel "textLabel"). A tap on the inactive half switches; Space switches, and the left and right arrow keys
// choose the half on their side. A caption that does not fit is elided and the whole of it becomes the tool
// tip, unless the switch has a tool tip of its own. In the global namespace because style sheets select it by
// name.
class SwitchButton : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text WRITE setText)
    Q_PROPERTY(bool status READ status WRITE setStatus NOTIFY statusChanged)
    Q_PROPERTY(bool compactMode READ isCompactMode WRITE setCompactMode)

public:
    explicit SwitchButton(QWidget* parent = nullptr);
    ~SwitchButton() override;

    // The caption.
    [[nodiscard]] QString text() const;
    void setText(const QString& text);

    [[nodiscard]] bool status() const { return m_status; }
    // A slot of statusChanged may call it again at once.
    void setStatus(bool on);

    // Compact: caption, in up to two lines, and halves in one row of 60 px, the halves 72 px wide.
    [[nodiscard]] bool isCompactMode() const { return m_compact; }
    void setCompactMode(bool compact);

signals:
    // Follows every change of the status, by the user and by code.
    void statusChanged(bool on);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    [[nodiscard]] Controls::SwitchHalf* addHalf(const QString& objectName, bool on, QBoxLayout* layout);
    void arrange();
    void showStatus();
    void showWords();
    void tellCutCaption();

    QBoxLayout* m_rows;
    Controls::ElidedLabel* m_caption;
    Controls::SwitchHalf* m_on;
    Controls::SwitchHalf* m_off;
    QString m_cutCaption; // the tool tip that stands for a caption that is cut; empty when it fits
    bool m_status = false;
    bool m_compact = false;
    bool m_focusByKeyboard = false;
};
