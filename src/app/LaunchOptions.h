#pragma once

#include <QString>
#include <QStringList>

// What the main process passes on the command line.
struct HelperLaunchOptions
{
    bool launchedByHost = false; // "--tarvinel-minibar-helper" was there
    QString server;              // name of the local socket to connect to
    QString token;               // passed on in AUTH; never logged
    qint64 hostPid = 0;          // process id of the main process

    [[nodiscard]] bool isValid() const
    {
        return launchedByHost && !server.isEmpty() && !token.isEmpty() && hostPid >= 1;
    }
};

// Reads the arguments from index 1 on. Unknown arguments, and a value option without a value, are ignored;
// the last of several equal options wins.
[[nodiscard]] HelperLaunchOptions parseLaunchOptions(const QStringList& arguments);

// Whether the argument, blanks around it aside, is the option that the token stands behind.
[[nodiscard]] bool isTokenOption(const QString& argument);
