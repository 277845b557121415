#pragma once

#include <QProcess>

namespace TestSupport {

// A process that never outlives the test: it is ended with the object, and by the kernel if the test crashes.
class ChildProcess final : public QProcess
{
public:
    explicit ChildProcess(QObject* parent = nullptr);
    ~ChildProcess() override;

    // Asks it to end (SIGTERM), insists after two seconds (SIGKILL), and returns when it is gone.
    void end();
    // Ends it on the spot, as a crash would (SIGKILL); returns when it is gone.
    void killNow();

protected:
    void setupChildProcess() override;
};

} // namespace TestSupport
