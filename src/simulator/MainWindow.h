#pragma once

#include <QPoint>
#include <QStringList>
#include <QVector>
#include <QWidget>

class QGridLayout;
class QLabel;
class QPushButton;

namespace Simulator {

class QuantitySpinBox;
class SignalGenerator;
class TwoWaySwitch;

// The main window of the simulated application: the instrument's panel and what is known about the mini bar.
// Minimising it, by its own button or by the window manager, only asks for the mini bar.
class MainWindow final : public QWidget
{
    Q_OBJECT

public:
    // Shows and changes the instrument, which must live longer.
    explicit MainWindow(SignalGenerator& instrument, QWidget* parent = nullptr);

    // Where the bar is to stand: the top right corner of the window with its frame, in screen pixels.
    [[nodiscard]] QPoint topRight() const;

    void showStatus(const QString& status);
    // Adds a line to the last requests.
    void addRequest(const QString& request, const QString& outcome);
    void bringBack();

signals:
    void minimiseWanted();
    void closeRequested();

protected:
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    // A setting that is only shown here: what it is set to, and whether it is on.
    struct ShownSetting
    {
        QLabel* detail;
        QLabel* state;
        void show(const QString& text, bool on, bool enabled) const;
    };

    [[nodiscard]] QWidget* buildHeader();
    [[nodiscard]] QWidget* buildInstrumentPanel();
    [[nodiscard]] QWidget* buildMiniBarPanel();
    void addRow(QGridLayout* grid, const QString& caption, const QString& hint, QWidget* control);
    [[nodiscard]] ShownSetting addShownRow(QGridLayout* grid, const QString& caption, const QString& name);
    void refresh();

    SignalGenerator& m_instrument;
    TwoWaySwitch* m_openSwitch;
    QuantitySpinBox* m_frequency;
    QuantitySpinBox* m_level;
    TwoWaySwitch* m_rfSwitch;
    ShownSetting m_sweep;
    ShownSetting m_modulation;
    QPushButton* m_minimise;
    QLabel* m_status;
    QLabel* m_requests;
    QVector<QStringList> m_requestLines; // time, request, outcome; newest first
};

} // namespace Simulator
