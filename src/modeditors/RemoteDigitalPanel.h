#pragma once

#include "modeditors/ConfirmingModEditor.h"

#include <memory>

namespace Ui {
class DigitalPanel;
}

// The editor of digital modulation items.
class RemoteDigitalPanel final : public ConfirmingModEditor
{
    Q_OBJECT

public:
    explicit RemoteDigitalPanel(QWidget* parent = nullptr);
    ~RemoteDigitalPanel() override;

protected:
    void showState() override;

private:
    struct Picker;
    static const Picker pickers[];

    void connectWidgets();
    void showDefaultTrim();
    void showTheme();
    void editPicker(const Picker& picker, int index);

    std::unique_ptr<Ui::DigitalPanel> m_form;
};
