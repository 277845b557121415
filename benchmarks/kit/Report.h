#pragma once

#include "kit/Rounds.h"
#include "kit/Samples.h"

#include <string>
#include <vector>

// Lines of cells under headings, printed so that a terminal and a Markdown page show it alike.
class Table final
{
public:
    explicit Table(std::vector<std::string> headings);

    void add(std::vector<std::string> cells);
    void print() const;

private:
    std::vector<std::vector<std::string>> m_lines;
};

// A number with so many digits that three or four of them count.
[[nodiscard]] std::string figure(double value);

// What one benchmark tells: its tables, and the limits that its figures are held to.
class Report final
{
public:
    // Takes "--check" from the arguments and prints the title.
    Report(int argc, char* const* argv, const char* title);

    // The short form that a test holds to its limits.
    [[nodiscard]] bool isCheck() const { return m_check; }
    // Of two numbers the one for this form.
    [[nodiscard]] int pick(int full, int check) const { return m_check ? check : full; }

    void print(const char* caption, const Table& table) const;
    // Median, p95, p99, longest and, of several rows, the first.
    void printTimes(const char* caption, const std::vector<Work>& works, const char* unit = "ms") const;

    // A figure that is to be `target` at most. The short form fails beyond `alarm`, which leaves room for
    // what other load on the machine does; a watched figure has an alarm alone.
    void limit(const std::string& what, double value, double target);
    void limit(const std::string& what, double value, double target, double alarm);
    void watch(const std::string& what, double value, double alarm);

    // Prints the limits; the program's exit code.
    [[nodiscard]] int finish() const;

private:
    bool m_check = false;
    bool m_alarmed = false;
    Table m_limits;
};
