#include "minibar/Cascade.h"

#include <QRegularExpression>
#include <algorithm>
#include <cmath>

namespace {

// Types that style sheets know a widget by, besides its own.
const QMap<QString, QStringList>& baseTypes()
{
    static const QMap<QString, QStringList> bases = {
        {QStringLiteral("LabelButton"), {QStringLiteral("InfoButton")}},
        {QStringLiteral("EnumTextButton"), {QStringLiteral("LabelButton"), QStringLiteral("InfoButton")}},
        {QStringLiteral("CommandButton"), {QStringLiteral("QPushButton")}},
        {QStringLiteral("QListWidget"), {QStringLiteral("QListView"), QStringLiteral("QAbstractItemView")}},
        {QStringLiteral("QListView"), {QStringLiteral("QAbstractItemView")}},
        {QStringLiteral("QTableWidget"), {QStringLiteral("QTableView"), QStringLiteral("QAbstractItemView")}},
        {QStringLiteral("QTreeView"), {QStringLiteral("QAbstractItemView")}},
        {QStringLiteral("QLabel"), {QStringLiteral("QFrame")}},
        {QStringLiteral("QFileDialog"), {QStringLiteral("QDialog")}},
        {QStringLiteral("QMessageBox"), {QStringLiteral("QDialog")}},
    };
    return bases;
}

QColor parsedColor(const QString& text)
{
    static const QRegularExpression rgba(QStringLiteral("rgba\\((\\d+),\\s*(\\d+),\\s*(\\d+),\\s*(\\d+)\\)"));
    const QRegularExpressionMatch parts = rgba.match(text);
    const auto part = [&](int i) { return parts.captured(i).toInt(); };
    if (parts.hasMatch())
        return {part(1), part(2), part(3), part(4)};
    return text == QLatin1String("none") ? QColor(Qt::transparent) : QColor(text);
}

bool fits(const StyledElement& wanted, const StyledElement& element)
{
    const QString type = wanted.types.value(0, QStringLiteral("*"));
    const bool typeFits =
        type == QLatin1String("*") || type == QLatin1String("QWidget") || element.types.contains(type);
    if (!typeFits || (!wanted.name.isEmpty() && wanted.name != element.name))
        return false;
    for (auto property = wanted.properties.cbegin(); property != wanted.properties.cend(); ++property)
        if (element.properties.value(property.key()) != property.value())
            return false;
    return true;
}

double linear(double channel)
{
    return channel <= 0.03928 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& color)
{
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

} // namespace

StyledElement StyledElement::parse(const QString& text)
{
    static const QRegularExpression form(
        QStringLiteral("^([*\\w]*)(?:#(\\w+))?((?:\\[[^]]*\\])*)((?::\\w+)*)(?:::([\\w-]+))?((?::\\w+)*)$"));
    static const QRegularExpression property(QStringLiteral("\\[(\\w+)=\"?(\\w+)\"?\\]"));
    const QRegularExpressionMatch match = form.match(text);
    StyledElement element;
    if (!match.captured(1).isEmpty())
        element.types = QStringList(match.captured(1)) + baseTypes().value(match.captured(1));
    element.name = match.captured(2);
    for (auto found = property.globalMatch(match.captured(3)); found.hasNext();) {
        const QRegularExpressionMatch one = found.next();
        element.properties.insert(one.captured(1), one.captured(2));
    }
    const QStringList states =
        QString(match.captured(4) + match.captured(6)).split(QLatin1Char(':'), Qt::SkipEmptyParts);
    element.states = QSet<QString>(states.cbegin(), states.cend());
    element.part = match.captured(5);
    return element;
}

Cascade::Rule Cascade::parseRule(const QString& selector)
{
    Rule rule;
    rule.selector = selector;
    bool direct = false;
    const QStringList words = selector.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    for (const QString& word : words) {
        if (word == QLatin1String(">")) {
            direct = true;
            continue;
        }
        const StyledElement element = StyledElement::parse(word);
        rule.path.append(element);
        rule.directChild.append(direct);
        rule.weight += 0x100 * !element.name.isEmpty() + 0x10 * element.properties.size() +
                       0x10 * element.states.size() +
                       (!element.types.isEmpty() && element.types.first() != QLatin1String("*"));
        direct = false;
    }
    return rule;
}

void Cascade::addSheet(const QString& sheet)
{
    static const QRegularExpression comment(QStringLiteral("/\\*.*?\\*/"),
                                            QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression block(QStringLiteral("([^{}]+)\\{([^}]*)\\}"));
    static const QRegularExpression declaration(QStringLiteral("([\\w-]+):\\s*([^;]+)"));
    QVector<Rule> rules;
    for (auto blocks = block.globalMatch(QString(sheet).remove(comment)); blocks.hasNext();) {
        const QRegularExpressionMatch match = blocks.next();
        QMap<QString, QString> declarations;
        for (auto found = declaration.globalMatch(match.captured(2)); found.hasNext();) {
            const QRegularExpressionMatch one = found.next();
            declarations.insert(one.captured(1), one.captured(2).trimmed());
        }
        const QStringList selectors = match.captured(1).split(QLatin1Char(','));
        for (const QString& selector : selectors) {
            rules.append(parseRule(selector.simplified()));
            rules.last().declarations = declarations;
        }
    }
    std::stable_sort(rules.begin(), rules.end(),
                     [](const Rule& one, const Rule& other) { return one.weight < other.weight; });
    m_rules += rules;
}

// The toolkit looks at the states of the widget itself only, not at those of what is around it.
bool Cascade::matches(const Rule& rule, const StyledPath& path)
{
    const StyledElement& wanted = rule.path.last();
    const StyledElement& subject = path.last();
    if (!fits(wanted, subject) || wanted.part != subject.part || !subject.states.contains(wanted.states))
        return false;
    int at = path.size() - 1;
    for (int i = rule.path.size() - 2; i >= 0; --i) {
        const bool direct = rule.directChild.at(i + 1);
        do
            --at;
        while (at >= 0 && !direct && !fits(rule.path.at(i), path.at(at)));
        if (at < 0 || !fits(rule.path.at(i), path.at(at)))
            return false;
    }
    return true;
}

QString Cascade::value(const StyledPath& path, const QStringList& properties)
{
    QString found;
    for (Rule& rule : m_rules) {
        if (!matches(rule, path))
            continue;
        for (const QString& property : properties) {
            const auto declared = rule.declarations.constFind(property);
            if (declared != rule.declarations.cend()) {
                rule.used = true;
                found = *declared;
            }
        }
    }
    return found;
}

QColor Cascade::textColor(const StyledPath& path)
{
    const QString own = value(path, {QStringLiteral("color")});
    if (!own.isEmpty())
        return parsedColor(own);
    if (path.last().part.isEmpty())
        return {};
    StyledPath widget = path; // a part takes what the whole has
    widget.last().part.clear();
    return textColor(widget);
}

QColor Cascade::background(const StyledPath& path)
{
    if (path.isEmpty())
        return {};
    const QString own = value(path, {QStringLiteral("background-color"), QStringLiteral("background")});
    const QColor color = own.isEmpty() ? QColor(Qt::transparent) : parsedColor(own);
    if (color.alpha() == 255)
        return color;
    StyledPath around = path;
    if (path.last().part.isEmpty())
        around.removeLast();
    else
        around.last().part.clear();
    return blended(color, background(around));
}

QStringList Cascade::unusedSelectors() const
{
    QStringList selectors;
    for (const Rule& rule : m_rules) {
        const bool colors = rule.declarations.contains(QStringLiteral("color")) ||
                            rule.declarations.contains(QStringLiteral("background-color"));
        if (colors && !rule.used)
            selectors.append(rule.selector);
    }
    return selectors;
}

QColor blended(const QColor& top, const QColor& below)
{
    const double a = top.alphaF();
    if (!below.isValid())
        return a > 0 ? top : QColor();
    return QColor::fromRgbF(top.redF() * a + below.redF() * (1 - a),
                            top.greenF() * a + below.greenF() * (1 - a),
                            top.blueF() * a + below.blueF() * (1 - a));
}

double contrast(const QColor& text, const QColor& background)
{
    const double one = luminance(blended(text, background));
    const double other = luminance(background);
    return (std::max(one, other) + 0.05) / (std::min(one, other) + 0.05);
}
