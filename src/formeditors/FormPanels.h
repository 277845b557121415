#pragma once

class QWidget;
class RemoteModEditor;

// The panels, each known to its own file alone; the new one is a child of `parent`.
[[nodiscard]] RemoteModEditor* createAmPanel(QWidget* parent);
[[nodiscard]] RemoteModEditor* createFmPanel(QWidget* parent);
[[nodiscard]] RemoteModEditor* createPmPanel(QWidget* parent);
[[nodiscard]] RemoteModEditor* createPulsePanel(QWidget* parent);
[[nodiscard]] RemoteModEditor* createRampPanel(QWidget* parent);
[[nodiscard]] RemoteModEditor* createAwgnPanel(QWidget* parent);
[[nodiscard]] RemoteModEditor* createArbPanel(QWidget* parent);
[[nodiscard]] RemoteModEditor* createStreamingPanel(QWidget* parent);
[[nodiscard]] RemoteModEditor* createDsssPanel(QWidget* parent);
[[nodiscard]] RemoteModEditor* createOfdmPanel(QWidget* parent);
