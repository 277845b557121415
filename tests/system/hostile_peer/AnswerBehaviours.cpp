#include "system/hostile_peer/Behaviour.h"
#include "system/hostile_peer/PeerSession.h"

namespace {

// What a click on RF asks for tells what the bar believes RF to be: the opposite. Each of these ends with
// such a click, so that the last request says whether the answers before it were believed.

QJsonObject payload(bool rf)
{
    return {{QStringLiteral("payload"),
             QJsonObject{{QStringLiteral("tx"), QJsonObject{{QStringLiteral("rf"), rf}}}}}};
}

QJsonObject refusal(const QString& code)
{
    return {{QStringLiteral("error"),
             QJsonObject{{QStringLiteral("code"), code}, {QStringLiteral("message"), QStringLiteral("no")}}}};
}

void answered(PeerSession& session)
{
    session.main().answer(session.clickRf(), true, payload(true));
    (void)session.clickRf();
}

void answeredEmpty(PeerSession& session)
{
    session.main().answer(session.clickRf(), true, {{QStringLiteral("payload"), QJsonObject()}});
    (void)session.clickRf();
}

void answeredTwice(PeerSession& session)
{
    const int id = session.clickRf();
    session.main().answer(id, true, payload(true));
    session.main().answer(id, true, payload(false));
    (void)session.clickRf();
}

void olderAnswerLast(PeerSession& session)
{
    const int older = session.clickRf();
    const int newer = session.clickRf();
    session.main().answer(newer, true, payload(true));
    session.main().answer(older, true, payload(false));
    (void)session.clickRf();
}

void unknownIds(PeerSession& session)
{
    session.main().answer(99, true, payload(true));
    session.main().answer(98, false, refusal(QStringLiteral("NOT_OPEN")));
    (void)session.clickRf();
}

void strangeIds(PeerSession& session)
{
    (void)session.clickRf();
    for (const char* id : {"\"1\"", "1.5", "-1", "0", "1e300", "null", "[1]", "true"})
        session.main().sendBytes(QByteArray("RSP {\"id\":") + id +
                                 R"(,"ok":true,"payload":{"tx":{"rf":true}}})" + '\n');
    session.main().sendBytes("RSP {\"ok\":true,\"payload\":{\"tx\":{\"rf\":true}}}\n");
    (void)session.clickRf();
}

void refused(PeerSession& session)
{
    session.main().answer(session.clickRf(), false, refusal(QStringLiteral("CONFLICT")));
    (void)session.clickRf();
}

void refusedWithState(PeerSession& session)
{
    QJsonObject extra = payload(true);
    extra.insert(QStringLiteral("error"), refusal(QStringLiteral("CONFLICT")).value(QStringLiteral("error")));
    session.main().answer(session.clickRf(), false, extra);
    (void)session.clickRf();
}

void shapelessRefusals(PeerSession& session)
{
    const QByteArray id = QByteArray::number(session.clickRf());
    for (const char* rest :
         {"", R"(,"ok":"true")", R"(,"ok":false,"error":"text")", R"(,"ok":false,"error":{"code":5}})"})
        session.main().sendBytes("RSP {\"id\":" + id + rest +
                                 (QByteArray(rest).endsWith("}}") ? "\n" : "}\n"));
    (void)session.clickRf();
}

void lateAnswer(PeerSession& session)
{
    const int id = session.clickRf();
    session.waitForLog("TIMEOUT");
    session.main().answer(id, true, payload(true));
    session.main().answer(id, false, refusal(QStringLiteral("INTERNAL_ERROR")));
    (void)session.clickRf();
}

void deathWhilePending(PeerSession& session)
{
    (void)session.clickRf();
    session.main().hangUp();
}

std::function<void(PeerSession&)> withBar(void (*act)(PeerSession&))
{
    return [act](PeerSession& session) {
        session.showBar();
        act(session);
    };
}

} // namespace

QVector<Behaviour> answerBehaviours()
{
    return {
        {"answered", "an answer with the new state (nothing hostile)", true, withBar(answered)},
        {"answered-empty", "an answer whose state is empty", true, withBar(answeredEmpty)},
        {"answered-twice", "a second answer that says otherwise", true, withBar(answeredTwice)},
        {"older-answer-last", "two requests, the older one answered last", true, withBar(olderAnswerLast)},
        {"unknown-ids", "answers that nobody asked for", true, withBar(unknownIds)},
        {"strange-ids", "answers whose ids are no ids", true, withBar(strangeIds)},
        {"refused", "a refusal", true, withBar(refused)},
        {"refused-with-state", "a refusal that carries the state", true, withBar(refusedWithState)},
        {"shapeless-refusals", "refusals that say nothing", true, withBar(shapelessRefusals)},
        {"late-answer", "silence, then an answer after the time-out", true, withBar(lateAnswer)},
        {"death-while-pending", "the peer dies before it answers", true, withBar(deathWhilePending)},
    };
}
