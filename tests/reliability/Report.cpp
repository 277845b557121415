#include "reliability/Report.h"

#include <QTextStream>

namespace {

void print(const char* verdict, const QString& name, const QString& detail)
{
    QTextStream stream(stdout);
    stream << verdict << "  " << name;
    if (!detail.isEmpty())
        stream << ": " << detail.trimmed();
    stream << Qt::endl;
}

} // namespace

void Report::check(const QString& name, bool good, const QString& detail)
{
    print(good ? "good" : "FAIL", name, detail);
    if (!good)
        ++m_failures;
}

void Report::leaveOut(const QString& name, const QString& reason)
{
    print("left", name, reason);
}
