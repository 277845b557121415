#pragma once

#include "support/Accessibility.h"
#include "support/ChildProcess.h"
#include "support/PrivateDisplay.h"
#include "system/BarView.h"

#include <QDir>
#include <optional>

// A private desktop on which the simulator and its mini bar are shown to a visitor.
class Tour final
{
public:
    // `stage` is the installed tree that the programs run from; pictures go to `folder`.
    Tour(const QString& stage, const QDir& folder);

    // The desktop is up and the simulator has been started.
    [[nodiscard]] bool begin();
    [[nodiscard]] QString errorString() const { return m_error; }

    [[nodiscard]] BarView& bar() { return *m_bar; }
    [[nodiscard]] const TestSupport::Desktop& desktop() const { return m_bar->desktop(); }
    [[nodiscard]] TestSupport::ChildProcess& simulator() { return m_simulator; }

    // The main window; an empty record while it is not on the screen.
    [[nodiscard]] TestSupport::WindowFacts mainWindow() const;
    // Clicks a button of the main window, given by its accessible name.
    [[nodiscard]] bool clickInMainWindow(const QString& button) const;
    // The helper that the simulator has started; 0 if there is none.
    [[nodiscard]] qint64 helperId() const;

    // From now on waitForLine looks at later lines only.
    void markTraffic();
    // Waits for a line of the conversation that holds the text.
    [[nodiscard]] bool waitForLine(const QByteArray& text);
    // Whether such a line has come since the mark.
    [[nodiscard]] bool hasLine(const QByteArray& text);
    [[nodiscard]] const QByteArray& traffic() const { return m_traffic; }

    // Saves the screen as <name>.png when it has come to rest.
    [[nodiscard]] bool picture(const QString& name) const;

private:
    void readTraffic();

    TestSupport::PrivateDisplay m_display;
    TestSupport::Accessibility m_accessibility{m_display};
    TestSupport::ChildProcess m_simulator;
    std::optional<BarView> m_bar; // once the display is there
    QString m_stage;
    QDir m_folder;
    QByteArray m_traffic;
    int m_mark = 0;
    QString m_error;
};

// One thing that the visitor does and sees.
struct TourStep
{
    const char* name; // of the picture, too
    const char* summary;
    bool (*perform)(Tour&); // false: it did not come out as it must
};

[[nodiscard]] const QVector<TourStep>& tourSteps();
