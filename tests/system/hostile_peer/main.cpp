// A main process with bad manners: starts the real helper, performs one behaviour of its table, and reports
// as one line of JSON what the helper made of it.
//
//   hostile_peer --list          the table
//   hostile_peer <behaviour>     perform it
//   hostile_peer --serve         start no helper: print the arguments for one, show its bar when it comes,
//   and stay

#include "system/hostile_peer/Behaviour.h"
#include "system/hostile_peer/PeerSession.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTextStream>
#include <algorithm>

namespace {

QVector<Behaviour> allBehaviours()
{
    return wireBehaviours() + contentBehaviours() + answerBehaviours();
}

void print(const QByteArray& line)
{
    QTextStream(stdout) << QString::fromUtf8(line) << Qt::endl;
}

int list()
{
    const auto behaviours = allBehaviours();
    for (const Behaviour& behaviour : behaviours)
        print(QByteArray(behaviour.name) + '\t' + behaviour.summary);
    return 0;
}

int serve()
{
    TestSupport::FakeMain main;
    print(QJsonDocument(QJsonArray::fromStringList(main.helperArguments())).toJson(QJsonDocument::Compact));
    if (main.waitForHandshake())
        main.sendLine("SHOW_MINIBAR", "900,100");
    return QCoreApplication::exec();
}

int perform(const Behaviour& behaviour)
{
    QElapsedTimer clock;
    clock.start();
    PeerSession session(behaviour.needsDisplay);
    if (!session.begin()) {
        qCritical("The helper did not come.");
        return 1;
    }
    behaviour.perform(session);
    QJsonObject report = session.finish();
    report.insert(QStringLiteral("behaviour"), QLatin1String(behaviour.name));
    report.insert(QStringLiteral("milliseconds"), clock.elapsed());
    print(QJsonDocument(report).toJson(QJsonDocument::Compact));
    return 0;
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication application(argc, argv);
    const QString wanted = QCoreApplication::arguments().value(1);
    if (wanted == QLatin1String("--list"))
        return list();
    if (wanted == QLatin1String("--serve"))
        return serve();
    const auto behaviours = allBehaviours();
    const auto found = std::find_if(behaviours.cbegin(), behaviours.cend(), [&](const Behaviour& candidate) {
        return wanted == QLatin1String(candidate.name);
    });
    if (found == behaviours.cend()) {
        qCritical("usage: hostile_peer --list | --serve | <behaviour>");
        return 2;
    }
    return perform(*found);
}
