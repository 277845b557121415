#pragma once

#include <QJsonObject>

namespace Simulator {

class SignalGenerator;

// The instrument's state as the mini bar reads it, without a sequence number. A closed instrument tells
// neither numbers nor texts.
[[nodiscard]] QJsonObject snapshotOf(const SignalGenerator& instrument);

// A copy of `target` with `patch` laid over it: objects are merged key by key, null takes a key away,
// anything else replaces (the rules of RFC 7396).
[[nodiscard]] QJsonObject merged(QJsonObject target, const QJsonObject& patch);

} // namespace Simulator
