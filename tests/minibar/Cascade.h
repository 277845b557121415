#pragma once

#include <QColor>
#include <QMap>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QVector>

// What a toolkit's style sheets say of a widget, without the widget: enough of the cascade to find the
// colours of a text and of what stands behind it.

// A part of a selector, or a widget: "LabelButton#name[property="value"]:state::part". Of a widget, the type
// comes with those that it is derived from.
struct StyledElement
{
    QStringList types;
    QString name;
    QMap<QString, QString> properties;
    QSet<QString> states;
    QString part;

    [[nodiscard]] static StyledElement parse(const QString& text);
};

// The widget is the last, the others are around it.
using StyledPath = QVector<StyledElement>;

class Cascade final
{
public:
    // A later sheet wins over an earlier one, whatever their selectors.
    void addSheet(const QString& sheet);

    // The colours as the sheets have them; the background with all that shines through. Invalid if none is
    // set.
    [[nodiscard]] QColor textColor(const StyledPath& path);
    [[nodiscard]] QColor background(const StyledPath& path);

    // The selectors of rules that set a colour or a background and have not been asked for.
    [[nodiscard]] QStringList unusedSelectors() const;

private:
    struct Rule
    {
        QString selector;
        StyledPath path;
        QVector<bool> directChild; // whether the part stands right inside the one before
        QMap<QString, QString> declarations;
        int weight = 0;
        bool used = false;
    };

    [[nodiscard]] static Rule parseRule(const QString& selector);
    [[nodiscard]] static bool matches(const Rule& rule, const StyledPath& path);
    [[nodiscard]] QString value(const StyledPath& path, const QStringList& properties);

    QVector<Rule> m_rules; // a later one wins
};

[[nodiscard]] QColor blended(const QColor& top, const QColor& below);

// WCAG's ratio, 1 to 21.
[[nodiscard]] double contrast(const QColor& text, const QColor& background);
