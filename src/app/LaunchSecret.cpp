#include "app/LaunchSecret.h"

#include "app/LaunchOptions.h"

#include <QFile>

#include <algorithm>
#include <cstring>

#ifdef Q_OS_LINUX
#include <sys/prctl.h>
#endif

namespace LaunchSecret {

namespace {

constexpr char blot = '*';

#ifdef Q_OS_LINUX

bool isTraced()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return false;
    const QByteArray text = status.readAll();
    const QByteArray key = "\nTracerPid:";
    const int found = text.indexOf(key);
    return found >= 0 && text.mid(found + key.size()).trimmed().front() != '0';
}

#endif

} // namespace

void guard()
{
#ifdef Q_OS_LINUX
    if (!isTraced())
        ::prctl(PR_SET_DUMPABLE, 0L);
#endif
}

void release()
{
#ifdef Q_OS_LINUX
    ::prctl(PR_SET_DUMPABLE, 1L);
#endif
}

void blotOut(const QString& secret)
{
    // Not through data(), which would leave the shared text alone and overwrite a copy.
    auto* text = const_cast<QChar*>(secret.constData());
    std::fill_n(text, secret.size(), QLatin1Char(blot));
}

void blotOutTokens(const QStringList& arguments, int argc, char** argv)
{
    for (int i = 1; i + 1 < arguments.size(); ++i) {
        if (isTokenOption(arguments.at(i)))
            blotOut(arguments.at(i + 1));
    }
    for (int i = 1; i + 1 < argc; ++i) {
        if (isTokenOption(QString::fromLocal8Bit(argv[i])))
            std::memset(argv[i + 1], blot, qstrlen(argv[i + 1]));
    }
}

} // namespace LaunchSecret
