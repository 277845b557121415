// Events and responses with every sort of JSON value, sound and broken, against the real helper: a broken one
// is told and shown nowhere, a sound one is shown, and none ends the bar.

#include "system/BarSession.h"
#include "system/JsonValues.h"

#include <QTest>

using namespace TestSupport;

namespace {

const QByteArray badEvent = "Minibar helper protocol error: Malformed minibar event: ";
const QByteArray badResponse = "Minibar helper protocol error: Malformed minibar response: ";

template <std::size_t size>
QVector<QByteArray> bytes(const std::string_view (&values)[size])
{
    QVector<QByteArray> list;
    for (const std::string_view value : values) {
        list.append(QByteArray(value.data(), int(value.size())));
    }
    return list;
}

QVector<QByteArray> nested()
{
    QVector<QByteArray> list;
    for (const int depth : {100, 1000, 100'000}) {
        list.append(QByteArray(depth, '[') + QByteArray(depth, ']'));
        list.append(QByteArray(depth, '[')); // and never closed
        list.append(QByteArray("{\"a\":").repeated(depth) + '1' + QByteArray(depth, '}'));
    }
    return list;
}

// A snapshot that shows `text` as the centre frequency, with the value in a field that nobody reads.
QByteArray snapshotEvent(const QByteArray& text, const QByteArray& value)
{
    return R"({"v":1,"event":"STAT:SNAP","payload":{"tx":{"centerText":")" + text + R"("},"other":)" + value +
           "}}";
}

QByteArray errorResponse(const QByteArray& value)
{
    return R"({"v":1,"id":1,"ok":false,"error":)" + value + "}";
}

} // namespace

class TestJsonValues final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void soundIsShown();
    void brokenIsTold();
    void anythingIsSurvived();

private:
    [[nodiscard]] int complaints(const QByteArray& of) const
    {
        return m_session->helper().errorOutput().count(of);
    }

    PrivateDisplay m_display;
    Accessibility m_accessibility{m_display};
    std::unique_ptr<BarSession> m_session;
};

void TestJsonValues::initTestCase()
{
    QVERIFY2(m_display.start(), qPrintable(m_display.errorString()));
    QVERIFY2(m_accessibility.start(), qPrintable(m_accessibility.errorString()));
}

void TestJsonValues::init()
{
    m_session = std::make_unique<BarSession>(m_display, m_accessibility);
    QVERIFY(m_session->begin());
}

// Whatever came, the bar lives, shows what comes next, and ends as it should.
void TestJsonValues::cleanup()
{
    m_session->main().sendLine("EVT", snapshotEvent("last", "0"));
    QTRY_COMPARE(m_session->shown(BarSession::Frequency), QStringLiteral("last"));
    m_session->main().sendLine("SHUTDOWN");
    QCOMPARE(m_session->helper().waitForExitCode(), std::optional<int>(0));
    m_session.reset();
}

void TestJsonValues::soundIsShown()
{
    int number = 0;
    const QVector<QByteArray> values = bytes(JsonValues::sound) + bytes(JsonValues::lenient);
    for (const QByteArray& value : values) {
        const QByteArray text = QByteArray::number(++number);
        m_session->main().sendLine("RSP", errorResponse(value));
        m_session->main().sendLine("EVT", snapshotEvent(text, value));
        QVERIFY2(waitUntil([&] { return m_session->shown(BarSession::Frequency) == QLatin1String(text); }),
                 value.constData());
    }
    QCOMPARE(complaints("Malformed"), 0);
}

void TestJsonValues::brokenIsTold()
{
    int told = 0;
    const QVector<QByteArray> values = bytes(JsonValues::broken);
    for (const QByteArray& value : values) {
        ++told;
        m_session->main().sendLine("EVT", snapshotEvent("broken", value));
        QVERIFY2(waitUntil([&] { return complaints(badEvent) == told; }), value.constData());
        m_session->main().sendLine("RSP", errorResponse(value));
        QVERIFY2(waitUntil([&] { return complaints(badResponse) == told; }), value.constData());
    }
    QVERIFY(m_session->shown(BarSession::Frequency) != QLatin1String("broken"));
}

void TestJsonValues::anythingIsSurvived()
{
    const QVector<QByteArray> values = bytes(JsonValues::free) + nested();
    for (const QByteArray& value : values) {
        m_session->main().sendLine("EVT", snapshotEvent("free", value));
        m_session->main().sendLine("RSP", errorResponse(value));
    }
    QVERIFY(m_session->main().waitUntilRead());
}

QTEST_GUILESS_MAIN(TestJsonValues)

#include "tst_json_values.moc"
