#pragma once

#include "modeditors/ConfirmingModEditor.h"

#include <memory>

namespace Ui {
class QuickWaveformPanel;
}

class WaveformBrowser;

// The editor of quick waveform items. The user chooses a WAV file below the root that the main process names;
// the main process loads it, and the editor shows how far that is.
class RemoteQuickWaveformPanel final : public ConfirmingModEditor
{
    Q_OBJECT

public:
    explicit RemoteQuickWaveformPanel(QWidget* parent = nullptr);
    ~RemoteQuickWaveformPanel() override;

protected:
    void showState() override;
    [[nodiscard]] bool canBeEnabled() const override;
    [[nodiscard]] bool completeSpec(NumericFieldSpec& spec) const override;

    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void connectWidgets();
    void showLoadState();
    void showTheme();
    [[nodiscard]] bool canScale() const;

    std::unique_ptr<Ui::QuickWaveformPanel> m_form;
    WaveformBrowser* m_browser;
};
