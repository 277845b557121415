#pragma once

#include <QStringList>

#include <sys/types.h>

// A helper in a process of its own: the test program started once more, with a behaviour as its first
// argument.
namespace HelperChild {

inline const QString good = QStringLiteral("good");       // answers SHOW, leaves on SHUTDOWN
inline const QString exits = QStringLiteral("exits");     // ends with code 42 on SHOW
inline const QString crashes = QStringLiteral("crashes"); // aborts on SHOW
inline const QString deaf = QStringLiteral("deaf"); // answers SHOW, ignores SHUTDOWN and the polite signal

inline const QString chatters = QStringLiteral("chatters"); // prints a line of chatterLength bytes and ends
constexpr int chatterLength = 100000;

[[nodiscard]] bool isWanted(const QStringList& arguments);
[[nodiscard]] int run(const QStringList& arguments);

[[nodiscard]] bool isAlive(pid_t process);

} // namespace HelperChild
