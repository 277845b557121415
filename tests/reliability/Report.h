#pragma once

#include <QString>

// What a program of this room says: one line for each check, and an exit code that is not zero if one failed.
class Report final
{
public:
    // Prints the line; `detail` holds what was measured.
    void check(const QString& name, bool good, const QString& detail = QString());
    // Prints why a check was left out.
    static void leaveOut(const QString& name, const QString& reason);
    [[nodiscard]] int exitCode() const { return m_failures == 0 ? 0 : 1; }

private:
    int m_failures = 0;
};
