#pragma once

#include <QWidget>

class QPushButton;

namespace Simulator {

// Two halves with words, one of them down. A press asks for the other state; the switch itself only shows
// what it was told.
class TwoWaySwitch final : public QWidget
{
    Q_OBJECT

public:
    // subject: what is switched, for assistive programs.
    TwoWaySwitch(const QString& offText, const QString& onText, const QString& subject,
                 QWidget* parent = nullptr);

    void setShownState(bool on);

signals:
    void wanted(bool on);

private:
    QPushButton* addHalf(const QString& text, const QString& subject, bool on);

    QPushButton* m_off;
    QPushButton* m_on;
    bool m_shown = false;
};

} // namespace Simulator
