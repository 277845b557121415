#include "system/hostile_peer/Behaviour.h"
#include "system/hostile_peer/PeerSession.h"

namespace {

constexpr int lineLimit = 0x1000000; // bytes; the longest line that the protocol allows

// Sends the pieces one after the other and does no more.
std::function<void(PeerSession&)> pieces(const QVector<QByteArray>& parts)
{
    return [parts](PeerSession& session) { session.sendPieces(parts); };
}

QVector<QByteArray> singleBytes(const QByteArray& text)
{
    QVector<QByteArray> parts;
    for (const char byte : text)
        parts += QByteArray(1, byte);
    return parts;
}

// `times` lines in one piece; `line` gives each with its end.
QByteArray flood(int times, const std::function<QByteArray(int)>& line)
{
    QByteArray all;
    all.reserve(times * line(times).size()); // the last one is the longest
    for (int i = 1; i <= times; ++i)
        all.append(line(i)); // += of a sum would take memory anew for every line
    return all;
}

// Nothing more is sent, for an answer is lost with a link that closes upon unread bytes.
void showAfterShutdown(PeerSession& session)
{
    session.main().sendBytes("SHUTDOWN\nSHOW_MINIBAR 900,100\n");
    session.waitForDisconnect();
}

void floodUnknown(PeerSession& session)
{
    session.main().sendBytes(
        flood(250000, [](int i) -> QByteArray { return "NOISE " + QByteArray::number(i) + '\n'; }));
}

void floodSnapshots(PeerSession& session)
{
    constexpr int alike = 10; // so many in a row say the same
    session.main().sendBytes(flood(100000, [](int i) -> QByteArray {
        return R"(EVT {"event":"STAT:SNAP","payload":{"seq":)" + QByteArray::number(i) +
               R"(,"tx":{"centerHz":)" + QByteArray::number(i / alike) + "}}}\n";
    }));
}

void floodSwitching(PeerSession& session)
{
    // Each restyles the RF buttons.
    session.main().sendBytes(flood(1000, [](int i) -> QByteArray {
        return QByteArray(R"(EVT {"event":"STAT:SNAP","payload":{"tx":{"rf":)") +
               (i % 2 == 0 ? "true" : "false") + "}}}\n";
    }));
}

void floodShow(PeerSession& session)
{
    session.main().sendBytes(flood(5000, [](int i) -> QByteArray {
        return "SHOW_MINIBAR " + QByteArray::number(300 + i % 400) + ",100\n";
    }));
}

void floodShowHide(PeerSession& session)
{
    constexpr int times = 1000;
    session.main().sendBytes(QByteArray("SHOW_MINIBAR 900,100\nHIDE_MINIBAR\n").repeated(times));
}

void neverReading(PeerSession& session)
{
    constexpr int times = 100000; // their answers fill the socket many times over
    session.main().setReading(false);
    session.main().sendBytes(QByteArray("HIDE_MINIBAR\n").repeated(times));
    (void)session.main().waitUntilRead();
    session.main().setReading(true);
}

void dieInMidLine(PeerSession& session)
{
    session.sendPieces({"SHOW_MINIB"});
    session.main().hangUp();
}

void dieInFlood(PeerSession& session)
{
    session.main().sendBytes(QByteArray("SHOW_MINIBAR 900,100\nHIDE_MINIBAR\n").repeated(100));
    session.main().hangUp();
}

} // namespace

QVector<Behaviour> wireBehaviours()
{
    const QByteArray showHide = "SHOW_MINIBAR 900,100\nHIDE_MINIBAR\n";
    const QByteArray longest(lineLimit, 'x');
    return {
        {"split-bytes", "two lines, a byte at a time", false, pieces(singleBytes(showHide))},
        {"two-lines-at-once", "two lines in one write", false, pieces({showHide})},
        {"line-and-a-half", "a line and a half, then the other half", false,
         pieces({showHide.left(28), showHide.mid(28)})},
        {"carriage-returns", "lines that end as on another system", false,
         pieces({"SHOW_MINIBAR 900,100\r\nHIDE_MINIBAR\r\n"})},
        {"blanks-around", "a word among blanks", false, pieces({"  HIDE_MINIBAR \t \n"})},
        {"tab-as-separator", "a tab where the space belongs", false, pieces({"SHOW_MINIBAR\t900,100\n"})},
        {"lower-case", "words in lower case", false,
         pieces({"show_minibar 900,100\nhide_minibar\nshutdown\n"})},
        {"unknown-words", "words that nobody knows", false,
         pieces({"HELLO\nSHOW\nSHOW_MINIBARS 1,1\nSHOW_MINIBAR,1\nSTAT:SNAP? {}\n"})},
        {"empty-lines", "lines of nothing", false, pieces({"\n\n   \n\t\n\r\n"})},
        {"own-words", "the words that only the helper says", false,
         pieces({"AUTH x\nREADY\nVISIBLE\nHIDDEN\nRESTORE_REQUEST\nREQ {\"v\":1,\"id\":1}\n"})},
        {"nul-bytes", "lines that hold zero bytes", false,
         pieces({QByteArray("SHOW\0_MINIBAR\n", 14), QByteArray("\0\n", 2), QByteArray("EVT \0\n", 6)})},
        {"invalid-utf8", "bytes that are no text", false,
         pieces({"\xff\xfe\nSHOW_MINIBAR \xff,\xfe\nEVT {\"event\":\"\xc3\x28\"}\n"})},
        {"longest-line", "a line of exactly the limit", false, pieces({longest + '\n'})},
        {"longest-without-end", "the limit without a line feed, which comes late", false,
         pieces({longest, "\n"})},
        {"oversized-without-end", "one byte more than the limit without a line feed", false,
         pieces({longest + 'x'})},
        {"oversized-line", "a line of 17 MiB, then a command", false,
         pieces({QByteArray(17 * 1024 * 1024, 'x') + "\nSHOW_MINIBAR 900,100\n"})},
        {"flood-unknown", "250,000 unknown lines", false, floodUnknown},
        {"flood-snapshots", "100,000 snapshots", false, floodSnapshots},
        {"flood-switching", "1,000 snapshots that switch RF on and off", false, floodSwitching},
        {"flood-show", "5,000 SHOW_MINIBAR with moving anchors", false, floodShow},
        {"flood-show-hide", "1,000 times SHOW_MINIBAR and HIDE_MINIBAR", false, floodShowHide},
        {"never-reading", "100,000 commands whose answers stay unread for long", false, neverReading},
        {"shutdown-twice", "SHUTDOWN twice in one write", false, pieces({"SHUTDOWN\nSHUTDOWN\n"})},
        {"shutdown-with-payload", "SHUTDOWN with a word after it", false, pieces({"SHUTDOWN now\n"})},
        {"shutdown-then-show", "a command after SHUTDOWN in the same write", false, showAfterShutdown},
        {"death-after-handshake", "the token is rejected", false,
         [](PeerSession& session) { session.main().hangUp(); }},
        {"death-in-mid-line", "the peer dies in the middle of a line", false, dieInMidLine},
        {"death-in-flood", "the peer dies while commands are under way", false, dieInFlood},
        {"half-closed", "the peer closes only its writing side", false,
         [](PeerSession& session) { session.main().stopWriting(); }},
    };
}
