#pragma once

#include "minibar/Placement.h"
#include "minibar/TurnMark.h"

#include <QObject>
#include <QPointer>
#include <QRect>
#include <functional>

class PopupWidget;
class QDialog;
class QLabel;
class QWidget;

namespace Controls {
class OverlayContainer;
}

// One of the bar's large popups: a dialog with a title and an editor, shown in a transparent overlay that
// covers the screen, so that a press anywhere beside it closes it. An open drop-down of the editor closes
// first. Its widgets are built on first use and kept.
class EditorPopup final : public QObject
{
    Q_OBJECT

public:
    struct Names
    {
        QString overlayHost;
        QString dialog;
    };

    // `bar` is the window that the popup belongs to; it must outlive the popup.
    EditorPopup(Names names, QWidget* bar);
    ~EditorPopup() override;

    [[nodiscard]] bool isBuilt() const { return m_dialog != nullptr; }
    // Builds overlay and dialog around the editor that `makeEditor` creates as a child of the dialog.
    void build(const QString& title, const std::function<QWidget*(QDialog*)>& makeEditor);
    void setTitle(const QString& title);
    void setStyleSheet(const QString& styleSheet);

    // Shows the popup under `button`, its right edge on that of the bar, whose frame is `bar`, at most as
    // wide as the screen; with `clampHeight` also at most as high. Without any screen nothing is shown. While
    // it is open it follows the size that its editor wants.
    void open(QWidget* button, const QRect& bar, bool clampHeight);
    void close();
    [[nodiscard]] bool isOpen() const { return m_open; }

    // True for the dialog, its overlay and everything in their windows, drop-downs included.
    [[nodiscard]] bool owns(const QObject* object) const;
    // A press beside the popup: closes an open drop-down, else the popup, unless a drop-down has closed in
    // this very turn.
    void pressedOutside();
    // Keeps account of the editor's drop-downs; to be told when one shows, hides or closes.
    void dropDownChanged(PopupWidget* dropDown, bool visible);
    // False when none is open.
    [[nodiscard]] bool closeDropDown();
    [[nodiscard]] bool hasDropDownJustClosed() const { return m_dropDownJustClosed.isSet(); }

    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    // The popup is about to close; what was opened from it must close with it.
    void closing();

private:
    // Where it was opened.
    struct Spot
    {
        const QWidget* button = nullptr;
        QRect bar;
        bool clampHeight = false;
    };
    [[nodiscard]] QRect wantedPlace(const Placement::Screens& screens) const;
    void putDialog();
    // The user closes it and goes on with the bar.
    void dismiss();

    Names m_names;
    QWidget* m_bar;
    QWidget* m_host = nullptr;
    Controls::OverlayContainer* m_overlay = nullptr;
    QDialog* m_dialog = nullptr;
    QLabel* m_title = nullptr;
    Spot m_spot;
    QRect m_placed; // on the screen
    bool m_open = false;
    QPointer<PopupWidget> m_dropDown;
    TurnMark m_dropDownJustClosed;
};
