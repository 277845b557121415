#include "reliability/LogWatch.h"

#include <algorithm>

namespace {

QStringList collected;
QtMessageHandler previous = nullptr;

void collect(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    const bool ofPlatform = text.contains(QLatin1String("This plugin does not support ")) ||
                            text.contains(QLatin1String("XDG_RUNTIME_DIR not set"));
    if (type == QtDebugMsg || type == QtInfoMsg || type == QtFatalMsg) // the last is never read from the list
        previous(type, context, text);
    else if (!ofPlatform)
        collected += text;
}

} // namespace

LogWatch::LogWatch()
{
    collected.clear();
    previous = qInstallMessageHandler(collect);
}

LogWatch::~LogWatch()
{
    qInstallMessageHandler(previous);
}

const QStringList& LogWatch::lines()
{
    return collected;
}

int LogWatch::count(const QString& text)
{
    return int(std::count_if(collected.cbegin(), collected.cend(),
                             [&](const QString& line) { return line.contains(text); }));
}
