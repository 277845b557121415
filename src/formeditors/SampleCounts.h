#pragma once

#include <QJsonValue>
#include <QString>

// Counts of samples, as the panels that play files read and show them.

// The whole part of a number; 0 for what is negative or no number, at most what 64 bits hold.
[[nodiscard]] quint64 wholeCount(const QJsonValue& value);

// How long so many samples take at a rate in Hz.
[[nodiscard]] QString durationText(quint64 samples, double rate);
