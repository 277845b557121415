#pragma once

#include <QObject>
#include <QStringList>

// Starts and ends the helper's process. Every operation returns at once; what came of it is told by a signal.
class HelperRunner : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    // Starts the program with the launch options of the mini bar. Not called while one is running.
    virtual void start(const QStringList& arguments) = 0;
    // Asks the process to end.
    virtual void terminate() = 0;
    // Ends the process without asking.
    virtual void kill() = 0;
    [[nodiscard]] virtual bool isRunning() const = 0;

signals:
    void failedToStart(const QString& reason);
    // One line of the process's standard output or error, without its line feed.
    void outputLine(const QString& line);
    // exitCode has no meaning when crashed is set.
    void finished(int exitCode, bool crashed);
};
