#pragma once

#include <QString>
#include <QStringList>

namespace Host {

// The command line that a mini bar is started with.
[[nodiscard]] QStringList launchArguments(const QString& serverName, const QString& token, qint64 hostPid);

// What a helper says with its exit code; a sentence for every number.
[[nodiscard]] QString exitCodeText(int exitCode);

} // namespace Host
