#pragma once

#include <QString>
#include <QTemporaryDir>
#include <QVector>

// A local server that never accepts and whose queue of waiting connections is full: connecting to it is
// neither refused nor accepted.
class FullBacklog final
{
public:
    FullBacklog() = default;
    ~FullBacklog();
    Q_DISABLE_COPY(FullBacklog)

    [[nodiscard]] bool start();
    [[nodiscard]] QString name() const { return m_folder.filePath(QStringLiteral("busy")); }
    [[nodiscard]] QString errorString() const { return m_error; }

private:
    QTemporaryDir m_folder;
    QVector<int> m_sockets; // the listening one first
    QString m_error;
};
