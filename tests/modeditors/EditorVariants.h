#pragma once

#include <QJsonObject>
#include <QRandomGenerator>
#include <QStringList>
#include <array>
#include <map>
#include <tuple>
#include <vector>

// A seeded source of chances.
class Random final
{
public:
    explicit Random(quint32 seed)
        : m_generator(seed)
    {}
    [[nodiscard]] int below(int bound) { return m_generator.bounded(bound); }
    [[nodiscard]] bool oneIn(int count) { return below(count) == 0; }

private:
    QRandomGenerator m_generator;
};

// What a modulation item can say, and what a new editor shows of it.
class EditorVariants final
{
public:
    static constexpr int perKind = 24;

    explicit EditorVariants(Random& random);

    // The kinds of all editors that take part, and one that has no editor.
    [[nodiscard]] static int kinds();
    [[nodiscard]] static QString kind(int index);

    struct Variant
    {
        QJsonObject state;
        QJsonObject profile;
    };

    [[nodiscard]] const Variant& variant(int kind, int index) const;
    // What an editor shows that has been given this item and nothing else; nothing where there is no editor.
    [[nodiscard]] const QStringList& shown(int kind, int index, bool enabled);

private:
    std::vector<std::array<Variant, perKind>> m_variants; // by kind
    std::map<std::tuple<int, int, bool>, QStringList> m_shown;
};
