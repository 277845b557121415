#pragma once

#include "host/HelperRunner.h"

#include <QByteArray>
#include <QProcess>
#include <QString>

// Runs the helper as a child process. Destroying it ends the child.
class HelperProcess final : public HelperRunner
{
    Q_OBJECT

public:
    // program: path of the helper. leadingArguments are put before the launch options of each start.
    explicit HelperProcess(const QString& program, const QStringList& leadingArguments = {},
                           QObject* parent = nullptr);
    ~HelperProcess() override;

    void start(const QStringList& arguments) override;
    void terminate() override;
    void kill() override;
    [[nodiscard]] bool isRunning() const override;
    // 0 while no process is running.
    [[nodiscard]] qint64 processId() const { return m_process.processId(); }

private:
    void readOutput();
    void flushOutput();

    QString m_program;
    QStringList m_leadingArguments;
    QProcess m_process;
    QByteArray m_output; // the line being received
};
