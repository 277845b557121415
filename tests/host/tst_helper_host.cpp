#include "host/FakeHelper.h"
#include "host/HelperListener.h"
#include "host/Secrets.h"
#include "link/LineDecoder.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

using namespace std::chrono_literals;

namespace {

using State = HelperHost::State;

const QString wellFormedRequest =
    QStringLiteral(R"(REQ {"v":1,"id":7,"cmd":"OUTP:STAT","args":{"enabled":true}})");

enum class Plant { Server, File, Folder, LinkToServer, LinkToFile, LinkToNothing };

// Something that lies where a server is to listen, until the object goes.
class Planted final
{
public:
    Planted(Plant plant, const QString& path)
        : m_path(path)
    {
        const QString target = m_elsewhere.filePath(QStringLiteral("target"));
        const bool isLink = plant >= Plant::LinkToServer;
        const QString place = isLink ? target : path;
        if (plant == Plant::Server || plant == Plant::LinkToServer)
            m_server.listen(place);
        else if (plant == Plant::File || plant == Plant::LinkToFile)
            QFile(place).open(QIODevice::WriteOnly);
        else if (plant == Plant::Folder)
            QDir().mkdir(place);
        if (isLink)
            QFile::link(target, path);
    }
    ~Planted()
    {
        if (!QFile::remove(m_path))
            QDir().rmdir(m_path);
    }
    Q_DISABLE_COPY(Planted)

    // What lies there.
    [[nodiscard]] QString description() const
    {
        struct stat facts = {};
        if (::lstat(QFile::encodeName(m_path).constData(), &facts) != 0)
            return QStringLiteral("nothing");
        return QStringLiteral("%1 %2 %3").arg(facts.st_ino).arg(facts.st_mode).arg(facts.st_size);
    }

private:
    QString m_path;
    QTemporaryDir m_elsewhere;
    QLocalServer m_server;
};

} // namespace

Q_DECLARE_METATYPE(Plant)

class TestHelperHost final : public QObject
{
    Q_OBJECT

private slots:
    void handshake();
    void launchOptions();
    void secretsDifferEachTime();
    void constantTimeComparison_data();
    void constantTimeComparison();
    void brokenRules_data();
    void brokenRules();
    void oversizedLine();
    void longestLineIsAccepted();
    void linesSplitAtEveryByte();
    void secondConnectionIsClosed();
    void nobodyFindsTheServerAfterTheHandshake();
    void takenServerNameIsLeftAlone_data();
    void takenServerNameIsLeftAlone();
    void impossibleServerNameIsReplaced();
    void serverIsPrivate();
    void anotherUserIsTurnedAway();
    void handshakeDeadline_data();
    void handshakeDeadline();
};

void TestHelperHost::handshake()
{
    HostFixture f;
    QSignalSpy ready(&f.host, &HelperHost::ready);
    QCOMPARE(f.host.state(), State::Idle);
    f.host.start();
    QCOMPARE(f.host.state(), State::Connecting);
    f.helper.enter(f.runner->server());
    QTRY_COMPARE(f.host.state(), State::Authenticating);
    f.helper.say(QLatin1String("AUTH ") + f.runner->token());
    QTRY_COMPARE(f.host.state(), State::AwaitingReady);
    QVERIFY(ready.isEmpty());
    f.helper.say(QStringLiteral("READY"));
    QTRY_COMPARE(ready.count(), 1);
    QVERIFY(f.host.isReady());
    QCOMPARE(f.host.bar(), HelperHost::Bar::Hidden);
    QCOMPARE(f.runner->calls, QStringList{QStringLiteral("start")});
}

void TestHelperHost::launchOptions()
{
    HostFixture f;
    f.host.start();
    QVERIFY(f.runner->server().startsWith(QLatin1String("tarvinel-minibar-")));
    QVERIFY(QRegularExpression(QStringLiteral("^[0-9a-f]{32}$")).match(f.runner->token()).hasMatch());
    QCOMPARE(f.runner->option(QStringLiteral("--host-pid")).toLongLong(), QCoreApplication::applicationPid());
    QVERIFY(!f.runner->server().contains(f.runner->token()));
}

void TestHelperHost::secretsDifferEachTime()
{
    QSet<QString> seen;
    for (int i = 0; i < 100; ++i)
        seen.insert(Host::randomHex128());
    QCOMPARE(seen.size(), 100);
}

void TestHelperHost::constantTimeComparison_data()
{
    QTest::addColumn<QString>("left");
    QTest::addColumn<QString>("right");
    QTest::addColumn<bool>("equal");
    QTest::newRow("both empty") << QString() << QString() << true;
    QTest::newRow("same") << QStringLiteral("0af") << QStringLiteral("0af") << true;
    QTest::newRow("first differs") << QStringLiteral("1af") << QStringLiteral("0af") << false;
    QTest::newRow("last differs") << QStringLiteral("0ae") << QStringLiteral("0af") << false;
    QTest::newRow("shorter") << QStringLiteral("0a") << QStringLiteral("0af") << false;
    QTest::newRow("high byte differs") << QString(QChar(0x0141)) << QString(QChar(0x0041)) << false;
}

void TestHelperHost::constantTimeComparison()
{
    QFETCH(QString, left);
    QFETCH(QString, right);
    QTEST(Host::equalInConstantTime(left, right), "equal");
    QTEST(Host::equalInConstantTime(right, left), "equal");
}

void TestHelperHost::brokenRules_data()
{
    // How far the handshake goes, what is said then, and what the host says about it. %token stands for the
    // token.
    QTest::addColumn<State>("reached");
    QTest::addColumn<QStringList>("lines");
    QTest::addColumn<QString>("reason");
    const auto row = [](const char* name, State reached, const QStringList& lines, const char* reason) {
        QTest::newRow(name) << reached << lines << QString::fromLatin1(reason);
    };
    const auto req = [](const char* json) {
        return QStringList{QLatin1String("REQ ") + QLatin1String(json)};
    };
    const QString auth = QStringLiteral("AUTH %token");

    row("wrong token", State::Authenticating, {QStringLiteral("AUTH 0123")}, "wrong token");
    row("no token", State::Authenticating, {QStringLiteral("AUTH")}, "wrong token");
    row("token with more behind it", State::Authenticating, {auth + QStringLiteral("0")}, "wrong token");
    row("AUTH missing", State::Authenticating, {QStringLiteral("READY")}, "unexpected line: READY");
    row("REQ before AUTH", State::Authenticating, {wellFormedRequest}, "unexpected line: REQ");
    row("lower case", State::Authenticating, {QStringLiteral("auth %token")},
        "unexpected line: auth \\*\\*\\*");
    row("unknown word first", State::Authenticating, {QStringLiteral("HELLO")}, "unexpected line: HELLO");
    row("empty line first", State::Authenticating, {QString()}, "unexpected line:");
    row("AUTH twice", State::AwaitingReady, {auth}, "unexpected line: AUTH \\*\\*\\*");
    row("REQ before READY", State::AwaitingReady, {wellFormedRequest}, "unexpected line: REQ");
    row("READY with payload", State::AwaitingReady, {QStringLiteral("READY now")},
        "unexpected line: READY now");
    row("AUTH after READY", State::Ready, {auth}, "unexpected line: AUTH \\*\\*\\*");
    row("READY twice", State::Ready, {QStringLiteral("READY")}, "unexpected line: READY");
    row("unknown word", State::Ready, {QStringLiteral("HELLO %token")}, "unexpected line: HELLO \\*\\*\\*");
    row("EVT from helper", State::Ready, {QStringLiteral("EVT {}")}, "unexpected line: EVT");
    row("RSP from helper", State::Ready, {QStringLiteral("RSP {}")}, "unexpected line: RSP");
    row("SHOW from helper", State::Ready, {QStringLiteral("SHOW_MINIBAR")}, "unexpected line: SHOW_MINIBAR");
    row("VISIBLE unasked", State::Ready, {QStringLiteral("VISIBLE")}, "acknowledged SHOW_MINIBAR");
    row("HIDDEN unasked", State::Ready, {QStringLiteral("HIDDEN")}, "acknowledged HIDE_MINIBAR");
    row("bad UTF-8 word", State::Ready, {QString(QChar(0xFFFD))}, "unexpected line");

    row("REQ without payload", State::Ready, {QStringLiteral("REQ")}, "malformed request");
    row("REQ no JSON", State::Ready, req("what"), "malformed request: illegal value");
    row("REQ array", State::Ready, req("[1]"), "Expected a JSON object");
    row("v missing", State::Ready, req(R"({"id":1,"cmd":"A","args":{}})"), "'v' must be 1");
    row("v 2", State::Ready, req(R"({"v":2,"id":1,"cmd":"A","args":{}})"), "'v' must be 1");
    row("v text", State::Ready, req(R"({"v":"1","id":1,"cmd":"A","args":{}})"), "'v' must be 1");
    row("id missing", State::Ready, req(R"({"v":1,"cmd":"A","args":{}})"), "'id' must be a positive integer");
    row("id 0", State::Ready, req(R"({"v":1,"id":0,"cmd":"A","args":{}})"),
        "'id' must be a positive integer");
    row("id 1.5", State::Ready, req(R"({"v":1,"id":1.5,"cmd":"A","args":{}})"), "'id' must be");
    row("id 2^31", State::Ready, req(R"({"v":1,"id":2147483648,"cmd":"A","args":{}})"), "'id' must be");
    row("id text", State::Ready, req(R"({"v":1,"id":"1","cmd":"A","args":{}})"), "'id' must be");
    row("cmd missing", State::Ready, req(R"({"v":1,"id":1,"args":{}})"), "'cmd' must be a command");
    row("cmd empty", State::Ready, req(R"({"v":1,"id":1,"cmd":"","args":{}})"), "'cmd' must be a command");
    row("cmd number", State::Ready, req(R"({"v":1,"id":1,"cmd":4,"args":{}})"), "'cmd' must be a command");
    row("args missing", State::Ready, req(R"({"v":1,"id":1,"cmd":"A"})"), "'args' must be an object");
    row("args array", State::Ready, req(R"({"v":1,"id":1,"cmd":"A","args":[]})"), "'args' must be an object");
    row("id twice", State::Ready, {wellFormedRequest, wellFormedRequest}, "request id 7 twice");
}

void TestHelperHost::brokenRules()
{
    QFETCH(State, reached);
    QFETCH(QStringList, lines);
    QFETCH(QString, reason);
    HostFixture f;
    QSignalSpy failed(&f.host, &HelperHost::failed);
    QSignalSpy closed(&f.host, &HelperHost::closed);
    QStringList conversation{QStringLiteral("AUTH %token"), QStringLiteral("READY")};
    conversation = conversation.mid(0, static_cast<int>(reached) - static_cast<int>(State::Authenticating));
    expectEnd(reason);

    f.host.start();
    f.helper.enter(f.runner->server());
    for (QString line : conversation + lines)
        f.helper.say(line.replace(QLatin1String("%token"), f.runner->token()));
    QTRY_COMPARE(f.host.state(), State::Idle);
    QCOMPARE(failed.count(), reached == State::Ready ? 0 : 1);
    QCOMPARE(closed.count(), reached == State::Ready ? 1 : 0);
    QCOMPARE(f.runner->calls.last(), QStringLiteral("terminate"));
    QTRY_VERIFY(!f.helper.isConnected());
}

void TestHelperHost::oversizedLine()
{
    HostFixture f;
    f.reachReady();
    QSignalSpy closed(&f.host, &HelperHost::closed);
    expectEnd(QStringLiteral("too long"));
    f.helper.sayBytes(QByteArray(LineDecoder::maximumLineLength + 1, 'x'));
    QTRY_COMPARE(closed.count(), 1);
}

void TestHelperHost::longestLineIsAccepted()
{
    HostFixture f;
    f.reachReady();
    QSignalSpy requests(&f.host, &HelperHost::requestReceived);
    const QByteArray head = R"(REQ {"v":1,"id":1,"cmd":"OUTP:STAT","args":{"x":")";
    const QByteArray tail = R"("}})";
    f.helper.sayBytes(head + QByteArray(LineDecoder::maximumLineLength - head.size() - tail.size(), 'x') +
                      tail);
    f.helper.sayBytes("\n");
    QTRY_COMPARE(requests.count(), 1);
}

void TestHelperHost::linesSplitAtEveryByte()
{
    HostFixture f;
    f.reachReady();
    QSignalSpy requests(&f.host, &HelperHost::requestReceived);
    const QByteArray bytes = wellFormedRequest.toUtf8() + '\n';
    for (const char byte : bytes) {
        QCOMPARE(requests.count(), 0);
        f.helper.sayBytes(QByteArray(1, byte));
        QCoreApplication::processEvents();
    }
    QTRY_COMPARE(requests.count(), 1);
}

void TestHelperHost::secondConnectionIsClosed()
{
    HostFixture f;
    f.host.start();
    f.helper.enter(f.runner->server());
    QTRY_COMPARE(f.host.state(), State::Authenticating);
    QTest::ignoreMessage(QtWarningMsg, "Closed a second connection to the mini bar's server");
    FakeHelper second;
    second.enter(f.runner->server());
    QTRY_VERIFY(!second.isConnected());
    QVERIFY(f.helper.isConnected());
    f.helper.say(QLatin1String("AUTH ") + f.runner->token());
    f.helper.say(QStringLiteral("READY"));
    QTRY_VERIFY(f.host.isReady());
}

void TestHelperHost::nobodyFindsTheServerAfterTheHandshake()
{
    HostFixture f;
    f.reachReady();
    QLocalSocket late;
    late.connectToServer(f.runner->server());
    QVERIFY(!late.waitForConnected(1000));
    QCOMPARE(late.error(), QLocalSocket::ServerNotFoundError);
    QVERIFY(f.host.isReady());
}

void TestHelperHost::takenServerNameIsLeftAlone_data()
{
    QTest::addColumn<Plant>("plant");
    QTest::newRow("another server") << Plant::Server;
    QTest::newRow("a file") << Plant::File;
    QTest::newRow("a folder") << Plant::Folder;
    QTest::newRow("a symbolic link to a server") << Plant::LinkToServer;
    QTest::newRow("a symbolic link to a file") << Plant::LinkToFile;
    QTest::newRow("a symbolic link to nothing") << Plant::LinkToNothing;
}

void TestHelperHost::takenServerNameIsLeftAlone()
{
    QFETCH(Plant, plant);
    const QString taken = QLatin1String("tarvinel-test-") + Host::randomHex128();
    const QString free = QLatin1String("tarvinel-test-") + Host::randomHex128();
    const Planted planted(plant, QDir::temp().filePath(taken));
    const QString before = planted.description();
    QStringList names{taken, free};
    HelperListener listener([&names] { return names.takeFirst(); });
    int entered = 0;
    connect(&listener, &HelperListener::entered, this, [&entered] { ++entered; });
    const QString path = QDir::temp().filePath(taken);
    QTest::ignoreMessage(
        QtWarningMsg,
        qPrintable(
            QStringLiteral("Another name for the mini bar's server is tried: '%1' is taken.").arg(path)));
    QVERIFY(listener.listen());
    QCOMPARE(listener.serverName(), free);
    QCOMPARE(planted.description(), before);
    QLocalSocket socket;
    socket.connectToServer(listener.serverName());
    QTRY_COMPARE(entered, 1);
}

void TestHelperHost::impossibleServerNameIsReplaced()
{
    const QString impossible = QStringLiteral("/nonexistent/server");
    const QString possible = QLatin1String("tarvinel-test-") + Host::randomHex128();
    const auto expectTries = [](int tries) {
        const QRegularExpression another(
            QStringLiteral("^Another name for the mini bar's server is tried: "));
        for (int i = 0; i < tries; ++i)
            QTest::ignoreMessage(QtWarningMsg, another);
    };
    expectTries(2);
    QStringList names{impossible, impossible, possible};
    HelperListener listener([&names] { return names.takeFirst(); });
    QVERIFY(listener.listen());
    QCOMPARE(listener.serverName(), possible);
    QVERIFY(names.isEmpty());

    expectTries(5);
    HelperListener hopeless([&impossible] { return impossible; });
    QVERIFY(!hopeless.listen());
    QVERIFY(!hopeless.errorString().isEmpty());
}

void TestHelperHost::serverIsPrivate()
{
    HostFixture f;
    f.host.start();
    const QFileInfo file(QDir::tempPath() + QLatin1Char('/') + f.runner->server());
    QVERIFY(file.exists());
    const QFile::Permissions others = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup |
                                      QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
    QCOMPARE(file.permissions() & others, QFile::Permissions());
}

// The file's mode keeps other users out, but not root.
void TestHelperHost::anotherUserIsTurnedAway()
{
    constexpr uid_t somebodyElse = 65534;
    if (::geteuid() != 0) {
        qInfo("left out: only root can be another user");
        return;
    }
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("server"));
    QCOMPARE(::chown(QFile::encodeName(folder.path()).constData(), somebodyElse, gid_t(-1)), 0);
    HelperListener listener([&path] { return path; });
    int entered = 0;
    connect(&listener, &HelperListener::entered, this, [&entered] { ++entered; });
    QLocalSocket root;
    QLocalSocket own;
    QCOMPARE(::seteuid(somebodyElse), 0);
    const bool listens = listener.listen();
    QCOMPARE(::seteuid(0), 0);
    root.connectToServer(path);
    QCOMPARE(::seteuid(somebodyElse), 0);
    own.connectToServer(path);
    QTest::ignoreMessage(QtWarningMsg, "Closed a connection of another user to the mini bar's server");
    const bool turnedAway =
        QTest::qWaitFor([&] { return entered == 1 && root.state() == QLocalSocket::UnconnectedState; });
    QCOMPARE(::seteuid(0), 0);
    QVERIFY2(listens, qPrintable(listener.errorString()));
    QVERIFY(turnedAway);
    QCOMPARE(own.state(), QLocalSocket::ConnectedState);
}

void TestHelperHost::handshakeDeadline_data()
{
    QTest::addColumn<int>("steps");
    QTest::addColumn<QString>("reason");
    QTest::newRow("never connects") << 0 << QStringLiteral("did not connect in time");
    QTest::newRow("never authenticates") << 1 << QStringLiteral("did not authenticate in time");
    QTest::newRow("never ready") << 2 << QStringLiteral("did not report ready in time");
}

void TestHelperHost::handshakeDeadline()
{
    QFETCH(int, steps);
    QFETCH(QString, reason);
    HelperTimeouts timeouts;
    timeouts.handshake = 400ms;
    HostFixture f(timeouts);
    QSignalSpy failed(&f.host, &HelperHost::failed);
    expectEnd(reason);
    QElapsedTimer watch;
    watch.start();
    f.host.start();
    if (steps > 0)
        f.helper.enter(f.runner->server());
    if (steps > 1)
        f.helper.say(QLatin1String("AUTH ") + f.runner->token());
    QTRY_COMPARE(failed.count(), 1);
    QVERIFY2(watch.elapsed() >= 380, "the deadline came early");
    QCOMPARE(f.runner->calls, QStringList({QStringLiteral("start"), QStringLiteral("terminate")}));
}

QTEST_GUILESS_MAIN(TestHelperHost)
#include "tst_helper_host.moc"
