#include "texttable/TextTable.h"

#include <QHash>
#include <QPair>
#include <QRegularExpression>
#include <QTextCodec>

#include <memory>
#include <optional>

namespace {

constexpr int leadingColumns = 2;  // context and source
constexpr int longestText = 32767; // characters that a workbook's cell can hold
constexpr int longestName = 31;    // and a sheet's name

QString atLine(int line, const QString& problem)
{
    return QStringLiteral("line %1: %2").arg(line).arg(problem);
}

std::optional<QString> fromUtf8(const QByteArray& bytes)
{
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    const QString text =
        QTextCodec::codecForName("UTF-8")->toUnicode(bytes.constData(), bytes.size(), &state);
    if (state.invalidChars > 0 || state.remainingChars > 0)
        return std::nullopt;
    return text;
}

// The character that \n, \t or \\ stands for; nothing for any other letter.
std::optional<QChar> unescaped(QChar letter)
{
    switch (letter.unicode()) {
    case 'n':
        return QLatin1Char('\n');
    case 't':
        return QLatin1Char('\t');
    case '\\':
        return letter;
    default:
        return std::nullopt;
    }
}

// One cell in the making; says what is wrong with it, empty if nothing is.
QString readCell(const QString& written, QString& cell)
{
    cell.clear();
    for (int i = 0; i < written.size(); ++i) {
        const QChar character = written[i];
        if (character.unicode() < ' ' || character.unicode() == 0x7F || character.unicode() == 0xFEFF)
            return QStringLiteral("it has the character U+%1 in it")
                .arg(character.unicode(), 4, 16, QLatin1Char('0'));
        if (character != QLatin1Char('\\')) {
            cell += character;
            continue;
        }
        const auto meant = i + 1 < written.size() ? unescaped(written[++i]) : std::nullopt;
        if (!meant)
            return QStringLiteral("a \\ stands before something else than n, t or \\");
        cell += *meant;
    }
    return cell.size() > longestText ? QStringLiteral("a text has more than %1 characters").arg(longestText)
                                     : QString();
}

QString readLine(const QByteArray& line, QStringList& cells)
{
    const std::optional<QString> text = fromUtf8(line);
    if (!text)
        return QStringLiteral("it is not UTF-8");
    const QStringList written = text->split(QLatin1Char('\t'));
    for (const QString& one : written) {
        QString cell;
        const QString problem = readCell(one, cell);
        if (!problem.isEmpty())
            return problem;
        cells.append(cell);
    }
    return {};
}

// Whether a workbook can have a sheet of this name.
bool canNameSheet(const QString& name)
{
    static const QRegularExpression forbidden(QStringLiteral("[\\[\\]:*?/\\\\]|^'|'$"));
    return name.size() <= longestName && !name.contains(forbidden);
}

QString checkHeadings(const QStringList& headings)
{
    if (headings.size() <= leadingColumns || headings[0] != QLatin1String("Context") ||
        headings[1] != QLatin1String("Source"))
        return QStringLiteral("the headings are not \"Context\", \"Source\" and the languages");
    for (int i = 0; i < headings.size(); ++i) {
        if (headings[i].isEmpty() || headings[i] != headings[i].trimmed())
            return QStringLiteral("heading %1 is empty or has blanks around it").arg(i + 1);
        if (QStringList(headings.mid(0, i)).contains(headings[i], Qt::CaseInsensitive))
            return QStringLiteral("the heading \"%1\" stands there twice").arg(headings[i]);
        if (!canNameSheet(headings[i]))
            return QStringLiteral("the heading \"%1\" cannot be the name of a sheet").arg(headings[i]);
    }
    return {};
}

} // namespace

QString TextTable::read(const QByteArray& utf8)
{
    QHash<QPair<QString, QString>, int> lines; // where a text stands
    QList<QByteArray> written = utf8.split('\n');
    if (written.last().isEmpty()) // the last line ends as the others do
        written.removeLast();
    for (int line = 1; line <= written.size(); ++line) {
        QStringList cells;
        QString problem = readLine(written[line - 1], cells);
        if (problem.isEmpty() && line == 1)
            problem = checkHeadings(cells);
        else if (problem.isEmpty() && cells.size() != headings.size())
            problem =
                QStringLiteral("it has %1 cells, the headings are %2").arg(cells.size()).arg(headings.size());
        else if (problem.isEmpty() && cells[1].isEmpty())
            problem = QStringLiteral("the source text is empty");
        else if (problem.isEmpty()) {
            const int before = lines.value({cells[0], cells[1]});
            if (before > 0)
                problem = QStringLiteral("the same context and source stand in line %1").arg(before);
            lines.insert({cells[0], cells[1]}, line);
        }
        if (!problem.isEmpty())
            return atLine(line, problem);
        if (line == 1)
            headings = cells;
        else
            rows.append(cells);
    }
    return headings.isEmpty() ? atLine(1, QStringLiteral("the headings are missing")) : QString();
}
