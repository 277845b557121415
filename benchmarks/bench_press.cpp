// How long a press takes to become a request: from the button's release, handed to the X server, to the REQ
// line at the main process; and a confirmed state to become visible: from the last byte of a typical snapshot
// to the first new pixel. Beside the floor program, which writes a word when it is clicked and paints another
// colour when it is told to.
#include "kit/Clocks.h"
#include "kit/HelperOnScreen.h"
#include "kit/ProcessFacts.h"
#include "kit/Report.h"
#include "kit/TypicalSnapshot.h"

#include <QGuiApplication>
#include <algorithm>

namespace {

constexpr double mostForPress = 1;    // ms
constexpr double mostForSnapshot = 4; // ms
constexpr double alarmForPress = 15;  // ms, of the median
constexpr double alarmTimesTheFloor = 30;
constexpr double leastFloor = 0.5; // ms: below that, what a busy machine does to both counts for more

enum Row { Press, FloorPress, Snapshot, FloorTurn };

class Session final
{
public:
    Session()
        : m_helper(m_display.environment(), TestSupport::helperPath())
        , m_floor(m_display.environment(), floorPath())
    {
        for (TimedProgram* program : {&m_helper, &m_floor}) {
            program->start({QStringLiteral("--only"), QStringLiteral("wire")});
            program->waitForWord("READY", 0);
        }
        m_helper.main().sendBytes(snapshot());
    }

    // Both stand at the same place, one after the other.
    void timeHelper(std::vector<Work>& rows, int rounds)
    {
        m_helper.main().sendLine("SHOW_MINIBAR", "900,100");
        require(m_display.waitForWindow(BarPlaces::rfCorner), "no bar");
        for (int round = 0; round < rounds; ++round)
            rows[Press].times.add(pressHelper());
        // What the pointer stands on has a colour of its own.
        m_display.hand().moveTo(BarPlaces::farAway);
        waitForRest(m_helper.processId());
        for (int round = 0; round < rounds; ++round)
            rows[Snapshot].times.add(change(m_helper, snapshot()));
        m_helper.main().sendLine("HIDE_MINIBAR");
        require(m_display.waitForScreen(BarPlaces::rfCorner), "the bar stays");
    }

    void timeFloor(std::vector<Work>& rows, int rounds)
    {
        m_floor.main().sendLine("SHOW");
        require(m_display.waitForWindow(BarPlaces::rfCorner), "no window");
        for (int round = 0; round < rounds; ++round) {
            rows[FloorPress].times.add(click(m_floor, "CLICK"));
            rows[FloorTurn].times.add(change(m_floor, "TURN\n"));
        }
        m_floor.main().sendLine("HIDE");
        require(m_display.waitForScreen(BarPlaces::rfCorner), "the window stays");
    }

private:
    // The typical snapshot with RF switched, which changes the colour of its button.
    QByteArray snapshot()
    {
        QJsonObject tx = m_typical.value(QStringLiteral("tx")).toObject();
        m_rf = !m_rf;
        tx.insert(QStringLiteral("rf"), m_rf);
        m_typical.insert(QStringLiteral("tx"), tx);
        return snapshotLine(m_typical, ++m_sequence);
    }

    double click(TimedProgram& program, const QByteArray& word)
    {
        const int before = program.main().count(word);
        const Stopwatch clock;
        m_display.hand().click(BarPlaces::rfCorner);
        program.waitForWord(word, before);
        return clock.ms();
    }

    double pressHelper()
    {
        const double time = click(m_helper, "REQ");
        m_helper.main().answer(++m_requestId, true);
        return time;
    }

    double change(TimedProgram& program, const QByteArray& line)
    {
        const QColor before = m_display.hand().colourAt(BarPlaces::rfCorner);
        const Stopwatch clock;
        program.main().sendBytes(line);
        require(m_display.hand().waitForColour(BarPlaces::rfCorner,
                                               [&before](const QColor& now) { return now != before; }),
                "nothing changes");
        return clock.ms();
    }

    TimedDisplay m_display;
    TimedProgram m_helper;
    TimedProgram m_floor;
    QJsonObject m_typical = typicalSnapshot();
    bool m_rf = true;
    int m_sequence = 0;
    int m_requestId = 0;
};

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    Report report(argc, argv, "Press and confirmed state");
    Session session;
    std::vector<Work> rows = {{"helper, press on RF to REQ", {}},
                              {"floor, press to a word on the wire", {}},
                              {"helper, snapshot to new pixels", {}},
                              {"floor, word to new pixels", {}}};
    std::vector<Work> warmUp = rows;
    session.timeHelper(warmUp, 3);
    session.timeFloor(warmUp, 3);
    const int turns = report.pick(20, 3);
    for (int turn = 0; turn < turns; ++turn) {
        session.timeHelper(rows, 50);
        session.timeFloor(rows, 50);
    }
    const auto p99 = [&rows](Row row) { return rows[row].times.percentile(99); };
    const auto ratio = [&rows](Row row, Row floor) {
        return rows[row].times.median() / std::max(rows[floor].times.median(), leastFloor);
    };
    report.printTimes("ms:", rows);
    report.limit("press to REQ, p99, ms", p99(Press), mostForPress);
    report.limit("press to REQ less the floor, medians, ms",
                 rows[Press].times.median() - rows[FloorPress].times.median(), mostForPress, alarmForPress);
    report.limit("snapshot to new pixels, p99, ms", p99(Snapshot), mostForSnapshot);
    report.watch("press / floor, medians", ratio(Press, FloorPress), alarmTimesTheFloor);
    report.watch("snapshot / floor, medians", ratio(Snapshot, FloorTurn), alarmTimesTheFloor);
    return report.finish();
}
