#include "host/LaunchArguments.h"

#include <QCoreApplication>

namespace Host {

namespace {

struct ExitMeaning
{
    int code;
    const char* text;
};

constexpr ExitMeaning exitMeanings[] = {
    {1, QT_TRANSLATE_NOOP("HelperHost", "It refused its launch options (exit code 1).")},
    {2, QT_TRANSLATE_NOOP("HelperHost", "It found no server to connect to (exit code 2).")},
    {3, QT_TRANSLATE_NOOP("HelperHost", "It could not send its token (exit code 3).")},
    {4, QT_TRANSLATE_NOOP("HelperHost", "It could not report ready (exit code 4).")},
};

} // namespace

QStringList launchArguments(const QString& serverName, const QString& token, qint64 hostPid)
{
    return {QStringLiteral("--tarvinel-minibar-helper"),
            QStringLiteral("--server"),
            serverName,
            QStringLiteral("--token"),
            token,
            QStringLiteral("--host-pid"),
            QString::number(hostPid)};
}

QString exitCodeText(int exitCode)
{
    for (const ExitMeaning& meaning : exitMeanings) {
        if (meaning.code == exitCode)
            return QCoreApplication::translate("HelperHost", meaning.text);
    }
    return QCoreApplication::translate("HelperHost", "Its exit code was %1.").arg(exitCode);
}

} // namespace Host
