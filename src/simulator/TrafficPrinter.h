#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTextStream>

class HelperHost;

namespace Simulator {

// Prints the conversation as it happens: milliseconds since the start, who speaks ("helper", "main", or "#"
// for what became of the link), the line.
class TrafficPrinter final : public QObject
{
    Q_OBJECT

public:
    // Prints to the file, which must stay open.
    TrafficPrinter(const HelperHost& host, FILE* file, QObject* parent = nullptr);

private:
    void print(const QString& speaker, const QString& text);

    QTextStream m_stream;
    QElapsedTimer m_watch;
};

} // namespace Simulator
