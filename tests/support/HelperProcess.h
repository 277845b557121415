#pragma once

#include "support/ChildProcess.h"
#include "support/Waiting.h"

#include <QProcessEnvironment>
#include <QTemporaryDir>
#include <optional>

namespace TestSupport {

// The installed tree of the build: bin/, configuration/, fonts/, data/.
[[nodiscard]] QString stagePath();
// The helper inside an installed tree.
[[nodiscard]] QString helperPath(const QString& stage = stagePath());

// A copy of the installed tree that a test may change and break: its Settings.ini, style sheets, texts,
// fonts. What is inside it is given by its path from the tree's root.
class StageCopy final
{
public:
    StageCopy();

    [[nodiscard]] bool isValid() const { return m_valid; }
    [[nodiscard]] QString path() const { return m_folder.path(); }
    // Writes one file, making its folders.
    [[nodiscard]] bool write(const QString& file, const QByteArray& content) const;
    // Takes away a file, a link or a folder with all that is in it; true also if there is none.
    [[nodiscard]] bool remove(const QString& entry) const;
    // Lays a link to the target, an empty folder or a file of this content there instead of whatever it was.
    [[nodiscard]] bool replaceByLink(const QString& entry, const QString& target) const;
    [[nodiscard]] bool replaceByFolder(const QString& entry) const;
    [[nodiscard]] bool replaceByFile(const QString& entry, const QByteArray& content) const;

private:
    QTemporaryDir m_folder;
    bool m_valid = false;
};

// The real helper program as a child of the test; without a display it runs on Qt's offscreen platform.
class HelperProcess final
{
public:
    explicit HelperProcess(const QProcessEnvironment& environment = offscreenEnvironment(),
                           const QString& program = helperPath());

    // Returns when the program runs.
    [[nodiscard]] bool start(const QStringList& arguments);
    [[nodiscard]] bool isRunning() const { return m_process.state() == QProcess::Running; }
    [[nodiscard]] qint64 processId() const { return m_process.processId(); }
    // Waits for the end; the exit code, or nothing if it goes on running or was ended by a signal.
    [[nodiscard]] std::optional<int> waitForExitCode(int deadline = defaultDeadline) const;
    // What it has written to its error channel so far, without the offscreen platform's own remarks.
    [[nodiscard]] QByteArray errorOutput() const;
    void killNow() { m_process.killNow(); }

    [[nodiscard]] static QProcessEnvironment offscreenEnvironment();

private:
    QTemporaryDir m_home;
    ChildProcess m_process;
    QString m_program;
    QByteArray m_errorOutput;
};

} // namespace TestSupport
