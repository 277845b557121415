#pragma once

#include <QJsonObject>
#include <QString>
#include <QStringList>

#include <optional>

namespace Simulator {

// Reads a JSON object whose keys are all known: every key that was never asked for is a fault. The first
// fault is kept, with the path of its key; reading on after it does no harm.
class CheckedObject final
{
public:
    // path: of the object in its file, empty for the root.
    CheckedObject(const QJsonObject& object, const QString& path, QString& error);

    [[nodiscard]] bool contains(QLatin1String key) const { return m_object.contains(key); }
    // Each gives nothing when the key is absent or, which is a fault, of another type.
    [[nodiscard]] std::optional<bool> boolean(QLatin1String key);
    [[nodiscard]] std::optional<double> number(QLatin1String key, double minimum, double maximum);
    [[nodiscard]] std::optional<int> integer(QLatin1String key, int minimum);
    [[nodiscard]] std::optional<QString> text(QLatin1String key);
    [[nodiscard]] std::optional<QJsonObject> object(QLatin1String key);
    [[nodiscard]] QJsonValue any(QLatin1String key);
    // A key that says something by being there: only true is allowed.
    [[nodiscard]] bool flag(QLatin1String key);

    void fault(const QString& key, const QString& sentence);
    [[nodiscard]] QString pathOf(const QString& key) const;
    // Looks for unknown keys; true when there was no fault at all.
    [[nodiscard]] bool finish();

private:
    QJsonObject m_object;
    QString m_path;
    QString& m_error;
    QStringList m_known;
};

} // namespace Simulator
