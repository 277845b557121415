#include "host/HelperChild.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

namespace {

// TarvinelSimulator as a process of its own, with this program as its mini bar.
struct Program
{
    explicit Program(const QStringList& arguments,
                     const QString& helper = QCoreApplication::applicationFilePath())
    {
        process.setProgram(QStringLiteral(SIMULATOR));
        process.setArguments(
            QStringList{QStringLiteral("--helper"), helper, QStringLiteral("--print-traffic")} + arguments);
        process.start();
    }
    ~Program()
    {
        process.kill();
        process.waitForFinished();
    }
    Q_DISABLE_COPY(Program)

    // Whether the line comes, the time and the speaker before it left away.
    bool prints(const QString& line)
    {
        return QTest::qWaitFor(
            [this, &line] { return output().contains(QLatin1Char(' ') + line + QLatin1Char('\n')); });
    }
    QString output()
    {
        m_output += QString::fromUtf8(process.readAllStandardOutput());
        return m_output;
    }
    bool ends()
    {
        return QTest::qWaitFor([this] { return process.state() == QProcess::NotRunning; });
    }

    QProcess process;

private:
    QString m_output;
};

} // namespace

class TestSimulatorProgram final : public QObject
{
    Q_OBJECT

private slots:
    void endsCleanlyOnASignal_data();
    void endsCleanlyOnASignal();
    void showsTheBarAtOnce();
    void restartsNothingAfterClose();
    void missingHelper();
    void badScenario();
    void badOption();
    void help();
};

void TestSimulatorProgram::endsCleanlyOnASignal_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("SIGTERM") << SIGTERM << QStringList();
    QTest::newRow("SIGINT") << SIGINT << QStringList();
    QTest::newRow("no window") << SIGTERM << QStringList{QStringLiteral("--no-window")};
}

void TestSimulatorProgram::endsCleanlyOnASignal()
{
    QFETCH(int, number);
    QFETCH(QStringList, arguments);
    Program program(arguments);
    QVERIFY(program.prints(QStringLiteral("READY")));
    QVERIFY(program.output().contains(QLatin1String("helper AUTH ***\n")));
    ::kill(static_cast<pid_t>(program.process.processId()), number);
    QVERIFY(program.ends());
    QVERIFY(program.prints(QStringLiteral("SHUTDOWN")));
    QVERIFY(program.prints(QStringLiteral("The mini bar was shut down.")));
    QCOMPARE(program.process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(program.process.exitCode(), 0);
}

void TestSimulatorProgram::showsTheBarAtOnce()
{
    Program program({QStringLiteral("--minimised"), QStringLiteral("--anchor"), QStringLiteral("1200,40")});
    QVERIFY(program.prints(QStringLiteral("SHOW_MINIBAR 1200,40")));
    QVERIFY(program.prints(QStringLiteral("VISIBLE")));
}

void TestSimulatorProgram::restartsNothingAfterClose()
{
    QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("short.json")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(R"({"timeline":[{"afterReady":10,"shutdown":true}]})");
    file.close();
    Program program({QStringLiteral("--no-window"), QStringLiteral("--exit-after-close"),
                     QStringLiteral("--scenario"), file.fileName()});
    QVERIFY(program.ends());
    QCOMPARE(program.process.exitCode(), 0);
    QCOMPARE(program.output().count(QLatin1String("READY")), 1);
}

void TestSimulatorProgram::missingHelper()
{
    Program program({QStringLiteral("--no-window"), QStringLiteral("--exit-after-close")},
                    QStringLiteral("/nonexistent/helper"));
    QVERIFY(program.ends());
    QCOMPARE(program.process.exitCode(), 3);
    QVERIFY(program.output().contains(QLatin1String("The helper did not start: ")));
}

void TestSimulatorProgram::badScenario()
{
    Program program({QStringLiteral("--scenario"), QStringLiteral("/nonexistent/tour.json")});
    QVERIFY(program.ends());
    QCOMPARE(program.process.exitCode(), 2);
    QVERIFY(program.process.readAllStandardError().contains("/nonexistent/tour.json: No such file"));
}

void TestSimulatorProgram::badOption()
{
    Program program({QStringLiteral("--fast")});
    QVERIFY(program.ends());
    QCOMPARE(program.process.exitCode(), 2);
    QVERIFY(program.process.readAllStandardError().endsWith("Unknown option 'fast'.\n"));
}

void TestSimulatorProgram::help()
{
    Program program({QStringLiteral("--help")});
    QVERIFY(program.ends());
    QCOMPARE(program.process.exitCode(), 0);
    QVERIFY(program.output().contains(QLatin1String("--exit-after-close")));
}

int main(int argc, char* argv[])
{
    QCoreApplication application(argc, argv);
    if (HelperChild::isWanted(application.arguments()))
        return HelperChild::run(application.arguments());
    TestSimulatorProgram test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_simulator_program.moc"
