// Attacks on the real main process by what stands where its helper would be.

#include "support/ChildProcess.h"
#include "support/HelperProcess.h"
#include "support/Waiting.h"

#include <QFile>
#include <QTest>
#include <unistd.h>

using namespace TestSupport;

class TestAttacks final : public QObject
{
    Q_OBJECT

private slots:
    void nobodyIsServed_data();
    void nobodyIsServed();
    void anotherUserCannotEnter();

private:
    // Runs the main process until the attack is over: all that both said. `token` is the one it was given.
    static QByteArray attacked(const QByteArray& attack, QByteArray& token);
};

QByteArray TestAttacks::attacked(const QByteArray& attack, QByteArray& token)
{
    const QTemporaryDir folder;
    const QString tokenFile = folder.filePath(QStringLiteral("token"));
    QProcessEnvironment environment = HelperProcess::offscreenEnvironment();
    environment.insert(QStringLiteral("TARVINEL_ATTACK"), QString::fromLatin1(attack));
    environment.insert(QStringLiteral("TARVINEL_TOKEN_FILE"), tokenFile);
    environment.insert(QStringLiteral("QT_LOGGING_RULES"), QStringLiteral("tarvinel.*=true"));
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), folder.path());
    ChildProcess main;
    main.setProcessEnvironment(environment);
    main.setProcessChannelMode(QProcess::MergedChannels);
    main.start(stagePath() + QStringLiteral("/bin/TarvinelSimulator"),
               {QStringLiteral("--helper"), QStringLiteral(ATTACKER), QStringLiteral("--no-window"),
                QStringLiteral("--print-traffic"), QStringLiteral("--exit-after-close")});
    QByteArray output;
    if (!waitUntil([&] {
            output += main.readAll();
            return main.state() == QProcess::NotRunning;
        }))
        return {};
    QFile file(tokenFile);
    token = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    return output + main.readAll();
}

void TestAttacks::nobodyIsServed_data()
{
    QTest::addColumn<QByteArray>("outcome");  // what the attacker tells
    QTest::addColumn<QByteArray>("sentence"); // what the main process logs
    const auto row = [](const char* attack, const char* outcome, const char* sentence) {
        QTest::newRow(attack) << QByteArray(outcome) << QByteArray(sentence);
    };
    const char turnedAway[] = "connected: Success; intruder not served; done";
    row("wrong-token", turnedAway, "The link to the mini bar ended: The helper sent a wrong token.");
    row("request-first", turnedAway,
        "The link to the mini bar ended: The helper sent an unexpected line: REQ {");
    row("silence", turnedAway, "The link to the mini bar ended: The helper did not authenticate in time.");
    row("token-twice", "helper served; second: No such file or directory; done",
        "The link to the mini bar ended: The helper sent an unexpected line: AUTH ***");
    row("second-connection", "intruder not served; helper served; done",
        "Closed a second connection to the mini bar's server");
}

void TestAttacks::nobodyIsServed()
{
    QFETCH(QByteArray, outcome);
    QFETCH(QByteArray, sentence);
    QByteArray token;
    const QByteArray output = attacked(QTest::currentDataTag(), token);
    QVERIFY2(output.contains(outcome), output.constData());
    QVERIFY2(output.count(sentence) == 1, output.constData());
    QCOMPARE(token.size(), 32);
    QVERIFY2(!output.contains(token), output.constData());
}

void TestAttacks::anotherUserCannotEnter()
{
    if (::geteuid() != 0) {
        // The mode of the server's file, which keeps others out, is held against "serverIsPrivate".
        qInfo("left out: only root can become another user");
        return;
    }
    QByteArray token;
    const QByteArray output = attacked("another-user", token);
    QVERIFY2(output.contains("connected: Permission denied; "), output.constData());
    QVERIFY2(!output.contains(token) && !output.contains("EVT"), output.constData());
}

QTEST_GUILESS_MAIN(TestAttacks)

#include "tst_attacks.moc"
