#include "app/LaunchOptions.h"

#include <QTest>

class TestLaunchOptions : public QObject
{
    Q_OBJECT

private slots:
    void parse_data();
    void parse();
};

void TestLaunchOptions::parse_data()
{
    QTest::addColumn<QString>("arguments"); // separated by "|", without the program
    QTest::addColumn<bool>("launchedByHost");
    QTest::addColumn<QString>("server");
    QTest::addColumn<QString>("token");
    QTest::addColumn<qint64>("hostPid");
    QTest::addColumn<bool>("valid");

    const auto row = [](const char* name, const char* arguments, bool byHost, const char* server,
                        const char* token, qint64 pid, bool valid) {
        QTest::newRow(name) << QString::fromUtf8(arguments) << byHost << QString::fromUtf8(server)
                            << QString::fromUtf8(token) << pid << valid;
    };
    const char* const whole = "--tarvinel-minibar-helper|--server|s|--token|t|--host-pid|1";
    row("nothing", "", false, "", "", 0, false);
    row("all", whole, true, "s", "t", 1, true);
    row("other order", "--host-pid|7|--token|t|--server|s|--tarvinel-minibar-helper", true, "s", "t", 7,
        true);
    row("no marker", "--server|s|--token|t|--host-pid|1", false, "s", "t", 1, false);
    row("marker only", "--tarvinel-minibar-helper", true, "", "", 0, false);
    row("no server", "--tarvinel-minibar-helper|--token|t|--host-pid|1", true, "", "t", 1, false);
    row("no token", "--tarvinel-minibar-helper|--server|s|--host-pid|1", true, "s", "", 1, false);
    row("no pid", "--tarvinel-minibar-helper|--server|s|--token|t", true, "s", "t", 0, false);
    row("server last", "--tarvinel-minibar-helper|--token|t|--host-pid|1|--server", true, "", "t", 1, false);
    row("token last", "--tarvinel-minibar-helper|--server|s|--host-pid|1|--token", true, "s", "", 1, false);
    row("pid last", "--tarvinel-minibar-helper|--server|s|--token|t|--host-pid", true, "s", "t", 0, false);
    row("second server last keeps the first",
        "--tarvinel-minibar-helper|--server|s|--token|t|--host-pid|1|--server", true, "s", "t", 1, true);
    row("pid 0", "--tarvinel-minibar-helper|--server|s|--token|t|--host-pid|0", true, "s", "t", 0, false);
    row("pid -5", "--tarvinel-minibar-helper|--server|s|--token|t|--host-pid|-5", true, "s", "t", -5, false);
    row("pid abc", "--tarvinel-minibar-helper|--server|s|--token|t|--host-pid|abc", true, "s", "t", 0, false);
    row("pid hexadecimal", "--tarvinel-minibar-helper|--server|s|--token|t|--host-pid|0x10", true, "s", "t",
        0, false);
    row("pid fraction", "--tarvinel-minibar-helper|--server|s|--token|t|--host-pid|1.5", true, "s", "t", 0,
        false);
    row("pid of 64 bits", "--tarvinel-minibar-helper|--server|s|--token|t|--host-pid|9223372036854775807",
        true, "s", "t", Q_INT64_C(9223372036854775807), true);
    row("pid beyond 64 bits", "--tarvinel-minibar-helper|--server|s|--token|t|--host-pid|9223372036854775808",
        true, "s", "t", 0, false);
    row("blanks around words and values",
        " --tarvinel-minibar-helper |--server |  s  | --token\t| t |--host-pid| 1 ", true, "s", "t", 1, true);
    row("blank server", "--tarvinel-minibar-helper|--server|  |--token|t|--host-pid|1", true, "", "t", 1,
        false);
    row("letter case counts", "--Tarvinel-minibar-helper|--SERVER|s|--token|t|--host-pid|1", false, "", "t",
        1, false);
    row("no equals sign form", "--tarvinel-minibar-helper|--server=s|--token|t|--host-pid|1", true, "", "t",
        1, false);
    row("last one wins",
        "--tarvinel-minibar-helper|--server|a|--token|t|--host-pid|1|--server|b|--token|u|--host-pid|2", true,
        "b", "u", 2, true);
    row("last pid wins even when it is none",
        "--tarvinel-minibar-helper|--server|s|--token|t|--host-pid|1|--host-pid|x", true, "s", "t", 0, false);
    row("unknown ones are ignored", "-v|x|--tarvinel-minibar-helper|--server|s|y|--token|t|--host-pid|1|--z",
        true, "s", "t", 1, true);
    row("an option as a value", "--tarvinel-minibar-helper|--server|--token|t|--host-pid|1", true, "--token",
        "", 1, false);
}

void TestLaunchOptions::parse()
{
    QFETCH(QString, arguments);
    QStringList list{QStringLiteral("--tarvinel-minibar-helper")}; // index 0 is the program and never counts
    if (!arguments.isEmpty())
        list += arguments.split(QLatin1Char('|'));
    const HelperLaunchOptions options = parseLaunchOptions(list);
    QTEST(options.launchedByHost, "launchedByHost");
    QTEST(options.server, "server");
    QTEST(options.token, "token");
    QTEST(options.hostPid, "hostPid");
    QTEST(options.isValid(), "valid");
}

QTEST_GUILESS_MAIN(TestLaunchOptions)
#include "tst_launch_options.moc"
