#include "app/LaunchOptions.h"

namespace {

QString option(QLatin1String key)
{
    return QStringLiteral("--%1").arg(key);
}

const QLatin1String tokenKey("token");

} // namespace

bool isTokenOption(const QString& argument)
{
    return argument.trimmed() == option(tokenKey);
}

HelperLaunchOptions parseLaunchOptions(const QStringList& arguments)
{
    const QString marker = option(QLatin1String("tarvinel-minibar-helper"));
    const QString server = option(QLatin1String("server"));
    const QString token = option(tokenKey);
    const QString hostPid = option(QLatin1String("host-pid"));

    HelperLaunchOptions options;
    for (int i = 1; i < arguments.size(); ++i) {
        const QString argument = arguments.at(i).trimmed();
        const bool hasValue = i + 1 < arguments.size();
        if (argument == marker)
            options.launchedByHost = true;
        else if (argument == server && hasValue)
            options.server = arguments.at(++i).trimmed();
        else if (argument == token && hasValue)
            options.token = arguments.at(++i).trimmed();
        else if (argument == hostPid && hasValue)
            options.hostPid = arguments.at(++i).toLongLong(); // 0 when it is no number
    }
    return options;
}
