#pragma once

#include "controls/NumericEntry.h"

#include <QDialog>
#include <memory>

namespace Controls {

class BaseUnitAdapter;

// The on-screen numeric keyboard: a frameless dialog beside its anchor, for finger, mouse and physical
// keyboard alike. It never sends anything itself: acceptance commits the value to the adapter, once, and then
// closes the dialog. It serves one entry; open a new one for the next.
class TouchNumKeyboard final : public QDialog
{
    Q_OBJECT

public:
    // `anchor`, the button it belongs to, must outlive the call only; the keyboard is a child of its window.
    // Without an anchor it stands in the middle of the screen.
    TouchNumKeyboard(std::unique_ptr<BaseUnitAdapter> adapter, const NumericEntry& entry, QWidget* anchor);
    ~TouchNumKeyboard() override;

    // The object that receives the value: the BaseUnitAdapter given at construction.
    [[nodiscard]] QObject* receiver() const;

public slots:
    void done(int result) override;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace Controls
