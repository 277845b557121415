#include "host/HelperChild.h"

#include <QLocalSocket>

#include <csignal>
#include <cstdio>
#include <unistd.h>

namespace HelperChild {

namespace {

constexpr int patience = 10000; // ms

QString option(const QStringList& arguments, const char* name)
{
    return arguments.value(arguments.indexOf(QLatin1String(name)) + 1);
}

// The behaviour's answer to a line; false when it is time to leave.
bool answer(const QString& behaviour, const QByteArray& line, QLocalSocket& socket)
{
    if (line.startsWith("SHOW_MINIBAR")) {
        if (behaviour == exits)
            _exit(42);
        if (behaviour == crashes)
            raise(SIGKILL);
        socket.write("VISIBLE\n");
    }
    return !line.startsWith("SHUTDOWN") || behaviour == deaf;
}

} // namespace

bool isWanted(const QStringList& arguments)
{
    return arguments.contains(QLatin1String("--tarvinel-minibar-helper"));
}

int run(const QStringList& arguments)
{
    const QString behaviour = arguments.value(1);
    if (behaviour == deaf)
        signal(SIGTERM, SIG_IGN);
    std::fputs("started\n", stderr);
    if (behaviour == chatters) {
        std::fputs(QByteArray(chatterLength, 'x').constData(), stderr);
        return 0;
    }
    QLocalSocket socket;
    socket.connectToServer(option(arguments, "--server"));
    if (!socket.waitForConnected(patience))
        return 2;
    socket.write("AUTH " + option(arguments, "--token").toUtf8() + "\nREADY\n");
    while (socket.waitForReadyRead(patience)) {
        while (socket.canReadLine()) {
            if (!answer(behaviour, socket.readLine(), socket))
                return 0;
        }
    }
    if (behaviour == deaf)
        pause(); // until killed
    return 0;
}

bool isAlive(pid_t process)
{
    return ::kill(process, 0) == 0;
}

} // namespace HelperChild
