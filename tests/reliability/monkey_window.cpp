// monkey_window [--events N] [--seed N]
// Random presses, keys, wheel turns, touches and states on the real window, in this process: no crash, no
// warning, no long turn of the event loop, and no request that nobody has asked for.

#include "reliability/LogWatch.h"
#include "reliability/Monkey.h"
#include "reliability/Report.h"

#include <QApplication>
#include <QCommandLineParser>

int main(int argc, char* argv[])
{
    constexpr double longestTurn = 100; // ms
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QCommandLineParser parser;
    parser.addHelpOption();
    const QCommandLineOption events(QStringLiteral("events"), QStringLiteral("How many."),
                                    QStringLiteral("number"), QStringLiteral("10000"));
    const QCommandLineOption seed(QStringLiteral("seed"), QStringLiteral("Of what is random."),
                                  QStringLiteral("number"), QStringLiteral("1"));
    parser.addOptions({events, seed});
    parser.process(application);

    const LogWatch log;
    Report report;
    Monkey monkey(parser.value(events).toLongLong(), parser.value(seed).toUInt());
    QObject::connect(&monkey, &Monkey::finished, &application, &QCoreApplication::quit);
    monkey.begin();
    QApplication::exec();
    report.check(QStringLiteral("survived"), monkey.kindsOfWindows() > 3,
                 QStringLiteral("%1 events of seed %2, %3 requests, %4 kinds of windows")
                     .arg(parser.value(events), parser.value(seed))
                     .arg(monkey.requests())
                     .arg(monkey.kindsOfWindows()));
    report.check(QStringLiteral("every turn of the event loop below 100 ms"),
                 monkey.longestTurn() < longestTurn,
                 QStringLiteral("longest %1 ms, after %2")
                     .arg(monkey.longestTurn(), 0, 'f', 1)
                     .arg(monkey.longestTurnOf()));
    report.check(QStringLiteral("no request from wheel or passing pointer"), monkey.unasked().isEmpty(),
                 QStringList(monkey.unasked().mid(0, 5)).join(QStringLiteral(" | ")));
    report.check(QStringLiteral("no warning in the log"), LogWatch::lines().isEmpty(),
                 QStringList(LogWatch::lines().mid(0, 5)).join(QStringLiteral(" | ")));
    return report.exitCode();
}
