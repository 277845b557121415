// Replays the sessions of docs/protocol.md against the real helper.

#include "system/BarSession.h"

#include <QFile>
#include <QJsonDocument>
#include <QTest>

using namespace TestSupport;

namespace {

struct Step
{
    QString actor; // main, helper, user
    QString line;
};
using Session = QVector<Step>;

// The blocks marked `session`, in the order of the page. A line without an actor is a step without one.
QVector<Session> readSessions()
{
    QFile page(QStringLiteral(PROTOCOL_PAGE));
    if (!page.open(QIODevice::ReadOnly | QIODevice::Text))
        return {};
    QVector<Session> sessions;
    bool inside = false;
    while (!page.atEnd()) {
        QString line = QString::fromUtf8(page.readLine());
        line.chop(line.endsWith(QLatin1Char('\n')) ? 1 : 0);
        if (line == QLatin1String("```session")) {
            inside = true;
            sessions.append(Session());
        } else if (line == QLatin1String("```")) {
            inside = false;
        } else if (inside) {
            const int end = line.indexOf(QLatin1Char('>'));
            sessions.last().append({line.left(end), line.mid(end + 2)}); // without one blank
        }
    }
    return sessions;
}

// Equal as JSON when both are; `<any>` stands for any value.
bool matches(const QJsonValue& actual, const QJsonValue& expected)
{
    if (expected == QStringLiteral("<any>"))
        return !actual.isUndefined();
    if (!expected.isObject() || !actual.isObject())
        return actual == expected;
    const QJsonObject wanted = expected.toObject();
    const QJsonObject got = actual.toObject();
    if (wanted.keys() != got.keys())
        return false;
    for (auto entry = wanted.begin(); entry != wanted.end(); ++entry)
        if (!matches(got.value(entry.key()), entry.value()))
            return false;
    return true;
}

bool matches(const WireLine& actual, const QString& expected)
{
    const QString word = expected.section(QLatin1Char(' '), 0, 0);
    if (actual.word != word.toUtf8())
        return false;
    QByteArray payload = expected.mid(word.size() + 1).toUtf8();
    if (!payload.startsWith('{'))
        return actual.payload == payload;
    payload.replace(":<any>", R"(:"<any>")");
    return matches(QJsonDocument::fromJson(actual.payload).object(),
                   QJsonDocument::fromJson(payload).object());
}

} // namespace

class TestProtocolPage final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void session_data();
    void session();

private:
    PrivateDisplay m_display;
    Accessibility m_accessibility{m_display};
};

void TestProtocolPage::initTestCase()
{
    QVERIFY2(m_display.start(), qPrintable(m_display.errorString()));
    QVERIFY2(m_accessibility.start(), qPrintable(m_accessibility.errorString()));
}

void TestProtocolPage::session_data()
{
    QTest::addColumn<int>("index");
    const int count = readSessions().size();
    QVERIFY(count >= 4);
    for (int index = 0; index < count; ++index)
        QTest::addRow("session %d", index + 1) << index;
}

void TestProtocolPage::session()
{
    QFETCH(int, index);
    const Session steps = readSessions().at(index);
    BarSession session(m_display, m_accessibility);
    QVERIFY(session.connect());
    bool attached = false;
    int heard = 0;
    for (const Step& step : steps) {
        const QByteArray told = QStringLiteral("%1> %2").arg(step.actor, step.line).toUtf8();
        if (step.actor == QLatin1String("main")) {
            session.main().sendBytes(step.line.toUtf8() + '\n');
        } else if (step.actor == QLatin1String("helper")) {
            QTRY_VERIFY2_WITH_TIMEOUT(session.main().lines().size() > heard, told.constData(), 3000);
            QString expected = step.line;
            expected.replace(QLatin1String("<token>"), session.main().token());
            const WireLine& line = session.main().lines().at(heard++);
            QVERIFY2(matches(line, expected), QByteArray(told + " and not " + line.raw).constData());
        } else {
            QCOMPARE(step.actor, QStringLiteral("user"));
            QCOMPARE(step.line, QStringLiteral("RF")); // the one button that the sessions press
            // A press shows what was last confirmed, so that this must have arrived.
            QVERIFY(session.main().waitUntilRead());
            attached = attached || session.attach(session.helper().processId());
            QVERIFY(attached);
            QVERIFY(session.click(session.centre(BarSession::Rf)));
        }
    }
    QCOMPARE(steps.last().line, QStringLiteral("SHUTDOWN"));
    QCOMPARE(session.helper().waitForExitCode(), std::optional<int>(0));
    QCOMPARE(session.main().lines().size(), heard);
}

QTEST_GUILESS_MAIN(TestProtocolPage)

#include "tst_protocol_page.moc"
