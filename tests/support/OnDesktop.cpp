// on_desktop <window manager> <program> [arguments...]
// Runs a program on an X server of its own, under a window manager, and gives back its exit code.
#include "support/PrivateDisplay.h"

#include <QCoreApplication>
#include <QProcess>
#include <cstdio>

int main(int argc, char* argv[])
{
    QCoreApplication application(argc, argv);
    QStringList arguments = QCoreApplication::arguments().mid(1);
    if (arguments.size() < 2) {
        std::fputs("usage: on_desktop <window manager> <program> [arguments...]\n", stderr);
        return 2;
    }
    TestSupport::PrivateDisplay display(arguments.takeFirst());
    if (!display.start()) {
        std::fprintf(stderr, "No desktop: %s\n", qPrintable(display.errorString()));
        return 2;
    }
    QProcess program;
    QProcessEnvironment environment = display.environment();
    // As the product sets it for itself; the software GL driver also leaks when it is unloaded.
    environment.insert(QStringLiteral("QT_XCB_GL_INTEGRATION"), QStringLiteral("none"));
    program.setProcessEnvironment(environment);
    program.setProcessChannelMode(QProcess::ForwardedChannels);
    program.start(arguments.takeFirst(), arguments);
    if (!program.waitForFinished(-1) || program.exitStatus() != QProcess::NormalExit) {
        std::fprintf(stderr, "The program ended badly: %s\n", qPrintable(program.errorString()));
        return 3;
    }
    return program.exitCode();
}
