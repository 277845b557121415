#pragma once

#include "system/BarSession.h"

#include <QJsonObject>
#include <QStringList>

// A snapshot with a sweep that can be edited and three modulation functions for which there is no editor.
[[nodiscard]] QJsonObject popupSnapshot();
// One in which nothing is as in the other, except what there is: sweep and functions.
[[nodiscard]] QJsonObject changedPopupSnapshot();

// The expanded bar of a real helper with all that opens from it, told apart by what the X server says of the
// windows.
class PopupSession final
{
public:
    enum Thing { Keypad, FieldKeypad, SweepPopup, ModPopup, ModMenu, DropDown };

    // Both must outlive the session.
    PopupSession(const TestSupport::PrivateDisplay& display, const TestSupport::Accessibility& accessibility);

    // The bar stands at the anchor, expanded, has been told popupSnapshot() and has the keyboard.
    [[nodiscard]] bool begin(const QPoint& anchor = BarSession::usualAnchor);
    // Opens a thing as a user does and waits until it and what it stands on are all there is. A field's
    // keypad and the drop-down stand on the sweep popup.
    [[nodiscard]] bool open(Thing thing);
    [[nodiscard]] static QStringList shownWith(Thing thing);
    // Chooses the n-th line of the open menu.
    [[nodiscard]] bool chooseInMenu(int line);

    // What is on the screen besides the bar.
    [[nodiscard]] QStringList shown() const { return m_bar.shownBeside(); }
    [[nodiscard]] bool waitForShown(const QStringList& things) const { return m_bar.waitForBeside(things); }
    // The helper has heard of all pointing and typing and has done what comes of it. The means: a wish to
    // close the bar goes the same way, and shows in what the main process is told.
    [[nodiscard]] bool settle();

    // Where it stands on the screen; empty when it is not there.
    [[nodiscard]] QRect menu() const { return m_bar.placeOf(QStringLiteral("menu")); }
    [[nodiscard]] QRect dropDown() const { return m_bar.placeOf(QStringLiteral("drop-down")); }
    [[nodiscard]] QRect dialog(const QString& title) const
    {
        return m_bar.control(title, QStringLiteral("dialog"), title);
    }

    [[nodiscard]] bool clickSweep() { return m_bar.click(m_bar.centre(BarSession::Sweep)); }
    [[nodiscard]] bool clickMod() { return m_bar.click(m_bar.centre(BarSession::Mod)); }
    [[nodiscard]] bool clickField(const QString& name);
    // Clicks at each place while the helper is stopped, which finds them all at once.
    [[nodiscard]] bool clickAtOnce(const QVector<QPoint>& places);
    [[nodiscard]] bool doubleClick(const QPoint& place);

    [[nodiscard]] BarSession& bar() { return m_bar; }
    [[nodiscard]] TestSupport::FakeMain& main() { return m_bar.main(); }
    [[nodiscard]] const TestSupport::Desktop& desktop() const { return m_bar.desktop(); }

    static const QString sweepTitle;
    static const QString modTitle; // of the first function

private:
    BarSession m_bar;
};
