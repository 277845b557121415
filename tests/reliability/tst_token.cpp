// The token of the command line: where it must not be found once the helper has used it.

#include "support/FakeMain.h"
#include "support/HelperProcess.h"
#include "support/Processes.h"
#include "system/FullBacklog.h"

#include <QDir>
#include <QFile>
#include <QTest>
#include <csignal>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

using namespace TestSupport;

namespace {

QByteArray utf16(const QString& text)
{
    return QByteArray(reinterpret_cast<const char*>(text.utf16()), text.size() * int(sizeof(ushort)));
}

// The texts that betray the token: it and its halves, in both encodings that a Qt program holds texts in.
QVector<QByteArray> tracesOf(const QString& token)
{
    QVector<QByteArray> traces;
    for (const QString& part : {token, token.left(token.size() / 2), token.mid(token.size() / 2)})
        traces << part.toUtf8() << utf16(part);
    return traces;
}

// A helper that may leave core files, in a folder of its own.
class DumpingHelper final
{
public:
    void start(const QStringList& arguments)
    {
        const QByteArray program = QFile::encodeName(helperPath());
        QList<QByteArray> texts{program};
        for (const QString& argument : arguments)
            texts += argument.toLocal8Bit();
        std::vector<char*> argv;
        for (QByteArray& text : texts)
            argv.push_back(text.data());
        argv.push_back(nullptr);
        const QByteArray folder = QFile::encodeName(m_folder.path());
        m_id = ::fork();
        if (m_id != 0)
            return;
        const rlimit unlimited{RLIM_INFINITY, RLIM_INFINITY};
        if (::chdir(folder.constData()) != 0 || ::setrlimit(RLIMIT_CORE, &unlimited) != 0)
            ::_exit(127);
        ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
        ::setenv("XDG_RUNTIME_DIR", folder.constData(), 1);
        ::execv(argv[0], argv.data());
        ::_exit(127);
    }
    // Crashes it; whether the system says that it has left a core.
    [[nodiscard]] bool crash() const
    {
        siginfo_t end = {};
        ::kill(m_id, SIGABRT);
        ::waitid(P_PID, id_t(m_id), &end, WEXITED);
        return end.si_code == CLD_DUMPED;
    }
    [[nodiscard]] qint64 processId() const { return m_id; }
    // The core files; none where the system puts them elsewhere.
    [[nodiscard]] QList<QByteArray> cores() const
    {
        QList<QByteArray> contents;
        const QDir folder(m_folder.path());
        const QStringList names = folder.entryList({QStringLiteral("*core*")}, QDir::Files);
        for (const QString& name : names) {
            QFile file(folder.filePath(name));
            if (file.open(QIODevice::ReadOnly))
                contents += file.readAll();
        }
        return contents;
    }

private:
    QTemporaryDir m_folder;
    pid_t m_id = 0;
};

} // namespace

class TestToken final : public QObject
{
    Q_OBJECT

private slots:
    void commandLine_data();
    void commandLine();
    void memory();
    void coreAfterTheHandshake();
    void noCoreBeforeTheHandshake();
};

void TestToken::commandLine_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QString>("token");
    const QString secret = QStringLiteral("secret-of-this-run");
    const QString option = QStringLiteral("--token");
    QTest::newRow("once") << QStringList{option, secret} << secret;
    QTest::newRow("among blanks") << QStringList{QStringLiteral(" --token "),
                                                 QStringLiteral(" %1\t").arg(secret)}
                                  << secret;
    QTest::newRow("the first of two") << QStringList{option, secret, option, QStringLiteral("x")} << secret;
    QTest::newRow("the second of two") << QStringList{option, QStringLiteral("x"), option, secret} << secret;
    QTest::newRow("beyond ASCII") << QStringList{option, QStringLiteral("geheim-äöü-用")}
                                  << QStringLiteral("geheim-äöü-用");
}

void TestToken::commandLine()
{
    QFETCH(QStringList, options);
    QFETCH(QString, token);
    FakeMain main;
    HelperProcess helper;
    QStringList arguments = main.helperArguments();
    arguments.erase(arguments.begin() + 3, arguments.begin() + 5); // its own token
    QVERIFY(helper.start(arguments + options));
    QVERIFY(main.waitForCount("READY", 1));
    const QByteArray shown = commandLineOf(helper.processId());
    QVERIFY(shown.contains(main.serverName().toUtf8()));
    QVERIFY(shown.contains("--token"));
    QVERIFY2(!shown.contains(token.toUtf8()), shown.constData());
    main.sendLine("SHUTDOWN");
    QCOMPARE(helper.waitForExitCode(), std::optional<int>(0));
}

void TestToken::memory()
{
    FakeMain main;
    HelperProcess helper;
    QVERIFY(helper.start(main.helperArguments()));
    QVERIFY(main.waitForHandshake());
    QVERIFY(main.show());
    const auto known = countInMemory(helper.processId(), utf16(main.serverName()));
    QVERIFY2(known.value_or(0) > 0, "the memory cannot be searched");
    const QVector<QByteArray> traces = tracesOf(main.token());
    for (const QByteArray& trace : traces)
        QCOMPARE(countInMemory(helper.processId(), trace), std::optional<int>(0));
}

void TestToken::coreAfterTheHandshake()
{
    FakeMain main;
    DumpingHelper helper;
    helper.start(main.helperArguments());
    QVERIFY(main.waitForHandshake());
    QVERIFY(main.show());
    QVERIFY2(countInMemory(helper.processId(), "x").has_value(), "open to a debugger again");
    const bool dumped = helper.crash();
    qInfo("The system %s a core file.", dumped ? "wrote" : "did not write");
    const QList<QByteArray> cores = helper.cores();
    const QVector<QByteArray> traces = tracesOf(main.token());
    for (const QByteArray& core : cores) {
        QVERIFY(core.contains(utf16(main.serverName())));
        for (const QByteArray& trace : traces)
            QVERIFY(!core.contains(trace));
    }
}

void TestToken::noCoreBeforeTheHandshake()
{
    FullBacklog busy; // the helper waits in front of it, its token in hand
    QVERIFY2(busy.start(), qPrintable(busy.errorString()));
    FakeMain main;
    QStringList arguments = main.helperArguments();
    arguments.replaceInStrings(main.serverName(), busy.name());
    DumpingHelper helper;
    helper.start(arguments);
    // The token has been read by then, and nothing has been sent.
    QVERIFY(waitUntil([&] { return commandLineOf(helper.processId()).contains("****"); }));
    QVERIFY(!helper.crash());
    QVERIFY(helper.cores().isEmpty());
}

QTEST_GUILESS_MAIN(TestToken)

#include "tst_token.moc"
