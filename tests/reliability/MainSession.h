#pragma once

#include "support/ChildProcess.h"
#include "system/BarView.h"

#include <QTemporaryDir>

// The real main process with its real helper, both of which a test may end as it likes.
class MainSession final
{
public:
    // The helper becomes this process's child when its own parent has gone, so that its end can be told.
    static void adoptOrphans();

    // Both must have been started and outlive the session.
    MainSession(const TestSupport::PrivateDisplay& display, const TestSupport::Accessibility& accessibility);

    // The main process runs and has started its helper. `scenario` is one as the main process plays them.
    [[nodiscard]] bool begin(const QByteArray& scenario);
    [[nodiscard]] BarView& bar() { return m_bar; }
    [[nodiscard]] qint64 helperId() const { return m_helperId; }
    [[nodiscard]] bool waitForLine(const QByteArray& text);

    void killMain() { m_main.killNow(); }
    struct HelperEnd
    {
        int status;          // as the kernel tells it (waitpid)
        double milliseconds; // until it was gone, less those in which other programs had the processors
    };
    // Waits for the end of the helper; nothing if it stays.
    [[nodiscard]] std::optional<HelperEnd> helperEnd() const;
    // Files that lie where a core file would.
    [[nodiscard]] QStringList cores() const;

private:
    QTemporaryDir m_folder;
    TestSupport::ChildProcess m_main;
    BarView m_bar;
    QByteArray m_output;
    qint64 m_helperId = 0;
};
