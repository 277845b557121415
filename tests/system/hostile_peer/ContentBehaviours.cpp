#include "system/hostile_peer/Behaviour.h"
#include "system/hostile_peer/PeerSession.h"

namespace {

std::function<void(PeerSession&)> lines(const QVector<QByteArray>& content)
{
    return [content](PeerSession& session) {
        for (const QByteArray& line : content)
            session.main().sendBytes(line + '\n');
    };
}

// EVT lines whose snapshots are these JSON texts.
std::function<void(PeerSession&)> snapshots(const QVector<QByteArray>& payloads)
{
    QVector<QByteArray> content;
    for (const QByteArray& payload : payloads)
        content += R"(EVT {"event":"STAT:SNAP","payload":)" + payload + '}';
    return lines(content);
}

QByteArray sweep(const QByteArray& extra)
{
    return R"({"sweep":{"available":true,"revision":1,"enabled":false,"selectedPlanId":"fscan",)"
           R"("frequencyPlan":{"startHz":1,"stopHz":2,"stepHz":1},)"
           R"("levelPlan":{"startDbm":1,"stopDbm":2,"stepDb":1},"dwellSeconds":1,"supportedPlanIds":["fscan"])" +
           extra + "}}";
}

// A duplicate key at the end of the object replaces the value given before.
QByteArray brokenSweep(const QByteArray& replacement)
{
    return sweep(',' + replacement);
}

void manyBusinesses(PeerSession& session)
{
    constexpr int many = 10000;
    QByteArray list;
    for (int i = 0; i < many; ++i) {
        const QByteArray number = QByteArray::number(i);
        list += (i == 0 ? "" : ",") +
                (R"({"id":"m)" + number + R"(","name":"N)" + number + R"(","text":"T","revision":1})");
    }
    const QByteArray snapshot = R"({"mod":{"enabled":true,"businesses":[)" + list + "]}}";
    session.main().sendBytes(R"(EVT {"event":"STAT:SNAP","payload":)" + snapshot + "}\n");
}

} // namespace

QVector<Behaviour> contentBehaviours()
{
    return {
        {"bad-anchors", "anchors that are no points", false,
         lines({"SHOW_MINIBAR", "SHOW_MINIBAR 1,2,3", "SHOW_MINIBAR a,5", "SHOW_MINIBAR ,",
                "SHOW_MINIBAR 1.5,2", "SHOW_MINIBAR 99999999999,1", "SHOW_MINIBAR 900;100"})},
        {"far-anchors", "anchors at the ends of the number range", false,
         lines({"SHOW_MINIBAR -40000,-40000", "SHOW_MINIBAR 2147483647,2147483647",
                "SHOW_MINIBAR -2147483648,-2147483648", "SHOW_MINIBAR -1,-1", "SHOW_MINIBAR 0,0"})},
        {"event-not-json", "events that are no JSON", false,
         lines({"EVT", "EVT {", "EVT nonsense", "EVT {}{}"})},
        {"event-not-object", "an event that is an array", false, lines({"EVT [1,2]"})},
        {"response-not-json", "responses that are no JSON", false,
         lines({"RSP", "RSP }", "RSP {\"id\":1,}"})},
        {"response-not-object", "a response that is an array", false, lines({"RSP []"})},
        {"not-a-number", "numbers that JSON does not have", false,
         snapshots({R"({"tx":{"centerHz":NaN}})", R"({"tx":{"centerHz":Infinity}})",
                    R"({"tx":{"centerHz":0x10}})"})},
        {"other-events", "events that are not for the bar", false,
         lines({R"(EVT {"event":"STAT:OTHER","payload":{"tx":{"rf":true}}})",
                R"(EVT {"event":5,"payload":{}})", R"(EVT {"payload":{"tx":{}}})", R"(EVT {})",
                R"(EVT {"event":"STAT:SNAP"})", R"(EVT {"event":"STAT:SNAP","payload":[{}]})",
                R"(EVT {"event":"STAT:SNAP","payload":null})"})},
        {"wrong-types", "snapshots whose values have the wrong types", false,
         snapshots(
             {R"({"seq":"7","tx":[],"mod":5,"sweep":"none"})",
              R"({"seq":{},"tx":{"rf":"yes","centerHz":"1e9","centerText":5,"centerUnit":[],"levelDbm":{},)"
              R"("levelText":false,"levelUnit":null}})",
              R"({"mod":{"enabled":1,"enabledBusinessId":7,"businesses":{"id":"a"}}})",
              R"({"mod":{"businesses":[1,"two",null,[],{"id":1,"text":2},{"id":"a"},{"text":"b"}]}})"})},
        {"extreme-numbers", "numbers at the ends of the double range", false,
         snapshots({R"({"seq":1e300,"tx":{"centerHz":1e308,"levelDbm":-1e308}})",
                    R"({"seq":-2147483649,"tx":{"centerHz":5e-324,"levelDbm":-0.0}})",
                    R"({"seq":1.5,"tx":{"centerHz":-1,"levelDbm":1e22}})"})},
        {"deep-nesting", "100,000 nested arrays", false,
         lines({"EVT " + QByteArray(100000, '['), "RSP " + QByteArray("{\"a\":").repeated(100000)})},
        {"long-texts", "display texts of 1 MiB, with line breaks and markup", false,
         snapshots(
             {R"({"tx":{"centerText":")" + QByteArray(1024 * 1024, 'W') + R"("}})",
              R"({"tx":{"centerText":"a\nb\u0000c\u202e","levelText":"<img src='/etc/hostname'><b>1</b>"}})"})},
        {"many-businesses", "10,000 modulation functions", false, manyBusinesses},
        {"bad-sweeps", "sweep sections that do not parse", false,
         snapshots({R"({"sweep":{}})", brokenSweep(R"("revision":0)"), brokenSweep(R"("revision":1.5)"),
                    brokenSweep(R"("enabled":1)"), brokenSweep(R"("selectedPlanId":"none")"),
                    brokenSweep(R"("selectedPlanId":"lscan")"), brokenSweep(R"("levelPlan":[])"),
                    brokenSweep(R"("frequencyPlan":{"startHz":1,"stopHz":"2"})"),
                    brokenSweep(R"("supportedPlanIds":[1])"), brokenSweep(R"("supportedPlanIds":[])"),
                    sweep({})})},
    };
}
