// on_desktop <window manager>[@<width>x<height>] <program> [arguments...]
// Runs a program on an X server of its own, under a window manager, and gives back its exit code.
#include "support/PrivateDisplay.h"

#include <QCoreApplication>
#include <QProcess>
#include <cstdio>

namespace {

// "none@2560x1600"; without a size the screen is as large as it is in all tests. False for another text.
bool parseDesktop(const QString& text, QString* windowManager, TestSupport::ScreenSetup* setup)
{
    const QStringList parts = text.split(QLatin1Char('@'));
    *windowManager = parts.first();
    if (parts.size() < 2)
        return true;
    const QStringList sides = parts.last().split(QLatin1Char('x'));
    setup->size = QSize(sides.first().toInt(), sides.last().toInt());
    return parts.size() == 2 && sides.size() == 2 && !setup->size.isEmpty();
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication application(argc, argv);
    QStringList arguments = QCoreApplication::arguments().mid(1);
    QString windowManager;
    TestSupport::ScreenSetup setup;
    if (arguments.size() < 2 || !parseDesktop(arguments.takeFirst(), &windowManager, &setup)) {
        std::fputs("usage: on_desktop <window manager>[@<width>x<height>] <program> [arguments...]\n",
                   stderr);
        return 2;
    }
    TestSupport::PrivateDisplay display(windowManager, setup);
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
