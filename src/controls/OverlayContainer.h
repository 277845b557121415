#pragma once

#include "controls/PressCatcher.h"

#include <QObject>
#include <QPointer>
#include <functional>

class QDialog;
class QWidget;

namespace Controls {

// Makes a host window the modal surround of one dialog: the host covers the screen, the dialog stands in it,
// and a press beside the dialog goes to a handler instead of anything else.
//
// A host that covers the screen must let it shine through. Where the screen cannot do that (an X server
// without a compositing manager) the host is cut down to the dialog, by its mask, and an unseen surface
// behind the window that the host belongs to takes the presses instead; those on the program's own windows
// go to them.
class OverlayContainer final : public QObject
{
    Q_OBJECT

public:
    // The host must outlive the container, which becomes its child.
    explicit OverlayContainer(QWidget* host);
    ~OverlayContainer() override;

    // False, as it is at first: the host is cut down to the dialog everywhere.
    void setBlocksOutsideInput(bool blocks);
    // Called for each press (mouse or touch) on the host outside the active dialog, which is consumed. It may
    // hide everything and delete the dialog.
    void setOutsideInputHandler(std::function<void()> handler);
    // The dialog becomes a child of the host, at its present position, in the host's coordinates; nullptr for
    // none. Not owned. A dialog that hides by itself (Esc) takes the host with it.
    void setActiveDialog(QDialog* dialog);
    [[nodiscard]] QDialog* activeDialog() const;
    // To be called when the host has been shown, before the dialog is.
    void prepareForShow();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    [[nodiscard]] bool filterHost(QEvent* event);
    void watchDialog(QEvent* event);
    void updateMask();
    void updateCatcher();
    [[nodiscard]] bool isOutside(const QPoint& globalPosition) const;
    void tellHandler();

    QWidget* m_host;
    QPointer<QWidget> m_dialog; // a QDialog; its last events come when it is one no longer
    std::function<void()> m_handler;
    PressCatcher m_catcher;
    bool m_blocks = false;
};

} // namespace Controls
