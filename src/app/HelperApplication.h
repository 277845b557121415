#pragma once

#include <QCoreApplication>

class MinibarClient;
class QApplication;
class RemoteMiniBarWindow;
struct HelperLaunchOptions;

// The helper process from the application object on.
class HelperApplication final
{
    Q_DECLARE_TR_FUNCTIONS(HelperApplication)

public:
    // The process's exit codes besides the event loop's own result.
    enum ExitCode { InvalidOptions = 1, NotConnected = 2, AuthNotSent = 3, ReadyNotSent = 4 };

    // Must run before the application object is created: settles the process's environment and its style.
    static void prepareEnvironment();
    // The part of it that decides what is seen.
    static void prepareDrawing();
    // Connects to the main process, shows its state and serves it until the link ends. Returns the exit code.
    // Overwrites the token in the arguments, which are those that the process was started with.
    [[nodiscard]] static int run(QApplication& application, int argc, char** argv);
    // Says to who starts the program by hand that it is not meant to be. Runs an event loop.
    static void tellHowItIsStarted();

private:
    [[nodiscard]] static int serve(QApplication& application, const HelperLaunchOptions& options);
    static void wire(QApplication& application, MinibarClient& client, RemoteMiniBarWindow& window);
};
