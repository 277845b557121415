#pragma once

#include <QByteArray>
#include <QVector>
#include <functional>

class PeerSession;

// One way of being a bad main process.
struct Behaviour
{
    const char* name;
    const char* summary;
    bool needsDisplay; // because the bar is to be clicked
    std::function<void(PeerSession&)> perform;
};

// How lines are cut, how long they are, how many there are, and how the peer goes away.
[[nodiscard]] QVector<Behaviour> wireBehaviours();
// What stands in the lines.
[[nodiscard]] QVector<Behaviour> contentBehaviours();
// How requests are answered.
[[nodiscard]] QVector<Behaviour> answerBehaviours();
