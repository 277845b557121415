#pragma once

#include "minibar/RemoteMiniBarWindow.h"

#include <QJsonObject>

class LabelButton;
class QDialog;
class QMenu;

// The bar in this process, expanded, showing a state, with what is opened from it.
class ExpandedBar final
{
public:
    explicit ExpandedBar(const QJsonObject& snapshot);

    [[nodiscard]] RemoteMiniBarWindow& window() { return m_window; }
    // Expands the bar again after a press elsewhere.
    void expand();

    // The button that bears this text or caption. Ends the program when there is none.
    [[nodiscard]] LabelButton* button(QLatin1String name) const;
    // Null as long as they have not been opened.
    [[nodiscard]] QMenu* menu() const;
    [[nodiscard]] QDialog* sweepPopup() const;
    [[nodiscard]] QDialog* modPopup() const;

private:
    RemoteMiniBarWindow m_window;
};
