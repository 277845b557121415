#pragma once

#include <QStringList>

// Collects the warnings of this program while it lives, the offscreen platform's own remarks left out; what a
// helper writes is among them, because its host warns of it.
class LogWatch final
{
public:
    LogWatch();
    ~LogWatch();
    Q_DISABLE_COPY(LogWatch)

    [[nodiscard]] static const QStringList& lines();
    // How many hold the text.
    [[nodiscard]] static int count(const QString& text);
};
