#pragma once

#include "support/Accessibility.h"
#include "support/PrivateDisplay.h"
#include "system/SimulatorSession.h"

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

    [[nodiscard]] BarView& bar() { return m_session->bar(); }
    [[nodiscard]] const TestSupport::Desktop& desktop() const { return m_session->bar().desktop(); }
    [[nodiscard]] TestSupport::ChildProcess& simulator() { return m_session->simulator(); }

    // The main window; an empty record while it is not on the screen.
    [[nodiscard]] TestSupport::WindowFacts mainWindow() const;
    // Clicks a button of the main window, given by its accessible name.
    [[nodiscard]] bool clickInMainWindow(const QString& button) const;
    // As of the session.
    [[nodiscard]] qint64 helperId() const { return m_session->helperId(); }
    void markTraffic() { m_session->markTraffic(); }
    [[nodiscard]] bool waitForLine(const QByteArray& text) { return m_session->waitForLine(text); }
    [[nodiscard]] bool hasLine(const QByteArray& text) { return m_session->hasLine(text); }
    [[nodiscard]] const QByteArray& traffic() const { return m_session->traffic(); }

    // Saves the screen as <name>.png when it has come to rest.
    [[nodiscard]] bool picture(const QString& name) const;

private:
    TestSupport::PrivateDisplay m_display;
    TestSupport::Accessibility m_accessibility{m_display};
    std::optional<SimulatorSession> m_session; // once the display is there
    QString m_stage;
    QDir m_folder;
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
