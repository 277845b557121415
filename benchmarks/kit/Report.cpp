#include "kit/Report.h"

#include <QString>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>

namespace {

// Characters, not bytes: what continues a UTF-8 character does not count.
std::size_t widthOf(const std::string& text)
{
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char byte) { return (byte & 0xC0) != 0x80; }));
}

// The offscreen platform remarks on all that it leaves undone.
void printMessage(QtMsgType, const QMessageLogContext&, const QString& message)
{
    if (!message.startsWith(QLatin1String("This plugin does not support ")))
        std::fprintf(stderr, "%s\n", qPrintable(message));
}

} // namespace

std::string figure(double value)
{
    const double magnitude = std::fabs(value);
    const int decimals = magnitude >= 1000 ? 0 : magnitude >= 100 ? 1 : magnitude >= 1 ? 2 : 3;
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", decimals, value);
    return text;
}

Table::Table(std::vector<std::string> headings)
    : m_lines{std::move(headings)}
{}

void Table::add(std::vector<std::string> cells)
{
    m_lines.push_back(std::move(cells));
}

void Table::print() const
{
    std::vector<std::size_t> widths(m_lines.front().size(), 3);
    for (const auto& line : m_lines) {
        for (std::size_t column = 0; column < line.size(); ++column)
            widths[column] = std::max(widths[column], widthOf(line[column]));
    }
    for (std::size_t number = 0; number < m_lines.size(); ++number) {
        const auto& line = m_lines[number];
        for (std::size_t column = 0; column < line.size(); ++column) {
            const std::string blanks(widths[column] - widthOf(line[column]), ' ');
            const std::string cell = column == 0 ? line[column] + blanks : blanks + line[column];
            std::printf("| %s ", cell.c_str());
        }
        std::printf("|\n");
        for (std::size_t column = 0; number == 0 && column < line.size(); ++column)
            std::printf("|%s%c", std::string(widths[column] + 1, '-').c_str(), column == 0 ? '-' : ':');
        if (number == 0)
            std::printf("|\n");
    }
    std::printf("\n");
}

Report::Report(int argc, char* const* argv, const char* title)
    : m_check(argc > 1 && std::strcmp(argv[1], "--check") == 0)
    , m_limits({"held to a limit", "measured", "at most", ""})
{
    qInstallMessageHandler(printMessage);
    std::printf("### %s\n\n", title);
}

void Report::print(const char* caption, const Table& table) const
{
    std::printf("%s\n\n", caption);
    table.print();
}

void Report::printTimes(const char* caption, const std::vector<Work>& works, const char* unit) const
{
    Table table({unit, "median", "p95", "p99", "longest", "least", "first"});
    for (const Work& work : works) {
        const Samples& times = work.times;
        table.add({work.name, figure(times.median()), figure(times.percentile(95)),
                   figure(times.percentile(99)), figure(times.most()), figure(times.least()),
                   figure(times.first())});
    }
    print(caption, table);
}

void Report::limit(const std::string& what, double value, double target)
{
    m_limits.add({what, figure(value), figure(target), value <= target ? "kept" : "missed"});
}

void Report::limit(const std::string& what, double value, double target, double alarm)
{
    limit(what, value, target);
    watch(what, value, alarm);
}

void Report::watch(const std::string& what, double value, double alarm)
{
    if (!m_check || value <= alarm)
        return;
    m_alarmed = true;
    std::printf("far too much: %s is %s, and %s even on a busy machine\n\n", what.c_str(),
                figure(value).c_str(), figure(alarm).c_str());
}

int Report::finish() const
{
    m_limits.print();
    return m_alarmed ? 1 : 0;
}
