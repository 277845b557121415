#include "simulator/TrafficPrinter.h"

#include "host/HelperHost.h"

namespace Simulator {

namespace {

constexpr int timeWidth = 7;
constexpr int speakerWidth = 6;

} // namespace

TrafficPrinter::TrafficPrinter(const HelperHost& host, FILE* file, QObject* parent)
    : QObject(parent)
    , m_stream(file)
{
    m_watch.start();
    m_stream.setCodec("UTF-8");
    connect(&host, &HelperHost::lineTraffic, this,
            [this](HelperLink::Direction direction, const QString& text) {
                print(direction == HelperLink::Direction::FromHelper ? QStringLiteral("helper")
                                                                     : QStringLiteral("main"),
                      text);
            });
    connect(&host, &HelperHost::failed, this,
            [this](const QString& reason) { print(QStringLiteral("#"), reason); });
    connect(&host, &HelperHost::closed, this,
            [this](const QString& reason) { print(QStringLiteral("#"), reason); });
}

void TrafficPrinter::print(const QString& speaker, const QString& text)
{
    m_stream << QString::number(m_watch.elapsed()).rightJustified(timeWidth) << ' '
             << speaker.leftJustified(speakerWidth) << ' ' << text << '\n';
    m_stream.flush();
}

} // namespace Simulator
