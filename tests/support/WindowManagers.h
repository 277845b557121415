#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>

namespace TestSupport {

// How one window manager is started bare: no panel, no desktop menus, no session.
struct WindowManager
{
    QString name;             // of the program
    QStringList arguments;    // "%1" stands for the path of the configuration file
    QByteArray configuration; // content of that file
    bool heedsUserTime;       // leaves the keyboard where it is when a new window asks for that
};

// The window managers that the programs are tried under; "none" stands for a display without one.
[[nodiscard]] const QVector<WindowManager>& windowManagers();
// The one with this name; nullptr if it is not in the table.
[[nodiscard]] const WindowManager* findWindowManager(const QString& name);

} // namespace TestSupport
