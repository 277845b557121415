#pragma once

#include "modeditors/ConfirmingModEditor.h"

#include <memory>
#include <optional>

namespace Ui {
class MultitonePanel;
}

// The editor of multitone items. The tones that can be chosen are computed by the main process; the editor
// lists them and reports which of them shall be on.
class RemoteMultitonePanel final : public ConfirmingModEditor
{
    Q_OBJECT

public:
    explicit RemoteMultitonePanel(QWidget* parent = nullptr);
    ~RemoteMultitonePanel() override;

protected:
    void showState() override;

private:
    void connectWidgets();
    void showSeed(bool shown);
    void showTheme();

    std::unique_ptr<Ui::MultitonePanel> m_form;
    std::optional<bool> m_seedShown; // none before the first state
};
