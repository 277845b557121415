#include "link/AnchorPoint.h"
#include "link/LinkSuites.h"
#include "link/MessageType.h"

#include <QTest>

using namespace MinibarHelperProtocol;
using Type = MinibarMessageType;

Q_DECLARE_METATYPE(MinibarMessageType)

class LineWordsSuite final : public QObject
{
    Q_OBJECT

private slots:
    void aWordReadsAndWritesBothWays_data();
    void aWordReadsAndWritesBothWays();
    void anyOtherWordIsInvalid_data();
    void anyOtherWordIsInvalid();
    void invalidHasNoWord();
    void aLineIsEncoded_data();
    void aLineIsEncoded();
    void aLineIsDecoded_data();
    void aLineIsDecoded();
    void anEncodedLineDecodesToItself_data() { aWordReadsAndWritesBothWays_data(); }
    void anEncodedLineDecodesToItself();
    void anAnchorPointIsRead_data();
    void anAnchorPointIsRead();
    void aWrittenAnchorPointReadsBack();
};

void LineWordsSuite::aWordReadsAndWritesBothWays_data()
{
    QTest::addColumn<Type>("type");
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("word");
    const auto row = [](Type type, int value, const char* word) {
        QTest::newRow(word) << type << value << QString::fromLatin1(word);
    };
    row(Type::Auth, 1, "AUTH");
    row(Type::Ready, 2, "READY");
    row(Type::ShowMinibar, 3, "SHOW_MINIBAR");
    row(Type::Visible, 4, "VISIBLE");
    row(Type::RestoreRequest, 5, "RESTORE_REQUEST");
    row(Type::HideMinibar, 6, "HIDE_MINIBAR");
    row(Type::Hidden, 7, "HIDDEN");
    row(Type::Shutdown, 8, "SHUTDOWN");
    row(Type::Evt, 9, "EVT");
    row(Type::Req, 10, "REQ");
    row(Type::Rsp, 11, "RSP");
}

void LineWordsSuite::aWordReadsAndWritesBothWays()
{
    QFETCH(Type, type);
    QFETCH(int, value);
    QFETCH(QString, word);
    QCOMPARE(static_cast<int>(type), value);
    QCOMPARE(messageWord(type), word);
    QCOMPARE(messageType(word), type);
}

void LineWordsSuite::anyOtherWordIsInvalid_data()
{
    QTest::addColumn<QString>("word");
    QTest::newRow("empty") << QString();
    QTest::newRow("lower case") << QStringLiteral("evt");
    QTest::newRow("mixed case") << QStringLiteral("Shutdown");
    QTest::newRow("blank before") << QStringLiteral(" EVT");
    QTest::newRow("line feed after") << QStringLiteral("EVT\n");
    QTest::newRow("beginning of a word") << QStringLiteral("HID");
    QTest::newRow("word and more") << QStringLiteral("HIDDENS");
    QTest::newRow("name of the enumerator") << QStringLiteral("ShowMinibar");
    QTest::newRow("number") << QStringLiteral("8");
}

void LineWordsSuite::anyOtherWordIsInvalid()
{
    QFETCH(QString, word);
    QCOMPARE(messageType(word), Type::Invalid);
}

void LineWordsSuite::invalidHasNoWord()
{
    QCOMPARE(static_cast<int>(Type::Invalid), 0);
    QCOMPARE(messageWord(Type::Invalid), QString());
    QCOMPARE(messageWord(static_cast<Type>(12)), QString());
    QCOMPARE(messageWord(static_cast<Type>(-1)), QString());
    QCOMPARE(MinibarMessage().type, Type::Invalid);
}

void LineWordsSuite::aLineIsEncoded_data()
{
    QTest::addColumn<Type>("type");
    QTest::addColumn<QString>("payload");
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("no payload, no trailing blank") << Type::Ready << QString() << QByteArray("READY\n");
    QTest::newRow("payload") << Type::Auth << QStringLiteral("t-1") << QByteArray("AUTH t-1\n");
    QTest::newRow("blanks of the payload stay")
        << Type::Auth << QStringLiteral(" a  b ") << QByteArray("AUTH  a  b \n");
    QTest::newRow("a blank is a payload") << Type::Auth << QStringLiteral(" ") << QByteArray("AUTH  \n");
    QTest::newRow("UTF-8") << Type::Evt << QString::fromUtf8("µ €")
                           << QByteArray("EVT \xC2\xB5 \xE2\x82\xAC\n");
    QTest::newRow("invalid") << Type::Invalid << QString() << QByteArray();
    QTest::newRow("invalid with a payload") << Type::Invalid << QStringLiteral("x") << QByteArray();
}

void LineWordsSuite::aLineIsEncoded()
{
    QFETCH(Type, type);
    QFETCH(QString, payload);
    QFETCH(QByteArray, line);
    QCOMPARE(encodeLine(type, payload), line);
}

void LineWordsSuite::aLineIsDecoded_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<Type>("type");
    QTest::addColumn<QString>("payload");
    const QString none;
    QTest::newRow("empty") << QByteArray() << Type::Invalid << none;
    QTest::newRow("blanks") << QByteArray(" \t \r") << Type::Invalid << none;
    QTest::newRow("word") << QByteArray("SHUTDOWN") << Type::Shutdown << none;
    QTest::newRow("blanks around the word") << QByteArray("  HIDE_MINIBAR \t") << Type::HideMinibar << none;
    QTest::newRow("carriage return") << QByteArray("SHUTDOWN\r") << Type::Shutdown << none;
    QTest::newRow("lower case") << QByteArray("hide_minibar") << Type::Invalid << none;
    QTest::newRow("payload") << QByteArray("SHOW_MINIBAR 1200,40") << Type::ShowMinibar
                             << QStringLiteral("1200,40");
    QTest::newRow("payload is trimmed")
        << QByteArray(" EVT \t {\"a\": 1}  ") << Type::Evt << QStringLiteral("{\"a\": 1}");
    QTest::newRow("payload keeps its blanks")
        << QByteArray("AUTH a  b c") << Type::Auth << QStringLiteral("a  b c");
    QTest::newRow("unknown word keeps its payload")
        << QByteArray("NOISE x y") << Type::Invalid << QStringLiteral("x y");
    QTest::newRow("word is trimmed before it is looked up")
        << QByteArray("EVT\t {}") << Type::Evt << QStringLiteral("{}");
    QTest::newRow("only a blank ends the word") << QByteArray("EVT\t{}") << Type::Invalid << none;
    QTest::newRow("wide blanks are trimmed")
        << QByteArray("\xE3\x80\x80SHUTDOWN\xC2\xA0") << Type::Shutdown << none;
    QTest::newRow("UTF-8") << QByteArray("EVT \xC2\xB5") << Type::Evt << QString(QChar(0xB5));
    QTest::newRow("bad UTF-8 in the payload")
        << QByteArray("EVT \xFF!") << Type::Evt << QString(QString(QChar(0xFFFD)) + QLatin1Char('!'));
    QTest::newRow("bad UTF-8 in the word")
        << QByteArray("EV\xC3T {}") << Type::Invalid << QStringLiteral("{}");
    QTest::newRow("cut UTF-8") << QByteArray("EVT \xE2\x82") << Type::Evt << QString(2, QChar(0xFFFD));
    QTest::newRow("zero byte does not end the line")
        << QByteArray("EVT a\0b", 7) << Type::Evt << QString::fromLatin1("a\0b", 3);
    QTest::newRow("zero byte in the word") << QByteArray("EVT\0", 4) << Type::Invalid << none;
    QTest::newRow("event") << QByteArray("EVT {}") << Type::Evt << QStringLiteral("{}");
    QTest::newRow("event with blanks")
        << QByteArray("EVT  \t\v\f{ } \r") << Type::Evt << QStringLiteral("{ }");
    QTest::newRow("event of blanks") << QByteArray("EVT \t ") << Type::Evt << none;
    QTest::newRow("event without payload") << QByteArray("EVT") << Type::Evt << none;
    QTest::newRow("longer word") << QByteArray("EVTS {}") << Type::Invalid << QStringLiteral("{}");
    QTest::newRow("control characters")
        << QByteArray("EVT \x1c\x7f") << Type::Evt << QStringLiteral("\x1c\x7f");
    QTest::newRow("not ASCII at the end")
        << QByteArray("EVT 12345678\xC2\xA0") << Type::Evt << QStringLiteral("12345678");
}

void LineWordsSuite::aLineIsDecoded()
{
    QFETCH(QByteArray, line);
    QFETCH(Type, type);
    QFETCH(QString, payload);
    const MinibarMessage message = decodeLine(line);
    QCOMPARE(message.type, type);
    QCOMPARE(message.payload, payload);
    // The short way, where there is one, leads to the same.
    if (const auto plain = plainPayload(line, Type::Evt)) {
        QCOMPARE(type, Type::Evt);
        QCOMPARE(*plain, payload.toUtf8());
    }
}

void LineWordsSuite::anEncodedLineDecodesToItself()
{
    QFETCH(Type, type);
    const QString payload = QString::fromUtf8("{\"text\":\"µ x\"}");
    const QByteArray line = encodeLine(type, payload);
    QVERIFY(line.endsWith('\n'));
    QVERIFY(!plainPayload(line, type)); // for want of ASCII
    const MinibarMessage message = decodeLine(line.chopped(1));
    QCOMPARE(message.type, type);
    QCOMPARE(message.payload, payload);
}

void LineWordsSuite::anAnchorPointIsRead_data()
{
    QTest::addColumn<QString>("payload");
    QTest::addColumn<QPoint>("point");
    const QPoint none(-1, -1);
    QTest::newRow("1200,40") << QStringLiteral("1200,40") << QPoint(1200, 40);
    QTest::newRow("blanks around the parts") << QStringLiteral(" 12 ,\t40 ") << QPoint(12, 40);
    QTest::newRow("negative") << QStringLiteral("-1920,-5") << QPoint(-1920, -5);
    QTest::newRow("leading zero is no octal") << QStringLiteral("010,08") << QPoint(10, 8);
    QTest::newRow("largest") << QStringLiteral("2147483647,0") << QPoint(2147483647, 0);
    QTest::newRow("empty") << QString() << none;
    QTest::newRow("one part") << QStringLiteral("12") << none;
    QTest::newRow("1,2,3") << QStringLiteral("1,2,3") << none;
    QTest::newRow("empty part at the end counts") << QStringLiteral("1,2,") << none;
    QTest::newRow("a,5") << QStringLiteral("a,5") << none;
    QTest::newRow("5,a") << QStringLiteral("5,a") << none;
    QTest::newRow("empty second") << QStringLiteral("5,") << none;
    QTest::newRow("fraction") << QStringLiteral("5.5,1") << none;
    QTest::newRow("hexadecimal") << QStringLiteral("0x10,1") << none;
    QTest::newRow("too large") << QStringLiteral("2147483648,0") << none;
    QTest::newRow("semicolon") << QStringLiteral("5;1") << none;
}

void LineWordsSuite::anAnchorPointIsRead()
{
    QFETCH(QString, payload);
    QFETCH(QPoint, point);
    QCOMPARE(readAnchorPoint(payload), point);
}

void LineWordsSuite::aWrittenAnchorPointReadsBack()
{
    QCOMPARE(writeAnchorPoint({1200, -40}), QStringLiteral("1200,-40"));
    QCOMPARE(readAnchorPoint(writeAnchorPoint({-7, 2147483647})), QPoint(-7, 2147483647));
}

std::unique_ptr<QObject> makeLineWordsSuite()
{
    return std::make_unique<LineWordsSuite>();
}

#include "LineWordsSuite.moc"
