#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QLatin1String>
#include <QString>

// Strict readers of one field of a JSON object. Each gives false when the field is missing or unfit, tells
// the reason in `error` when that is given, and leaves `target` as it was.
namespace MinibarHelperProtocol {

[[nodiscard]] bool readBool(const QJsonObject& object, QLatin1String key, bool* target,
                            QString* error = nullptr);
[[nodiscard]] bool readString(const QJsonObject& object, QLatin1String key, QString* target,
                              QString* error = nullptr);
[[nodiscard]] bool readArray(const QJsonObject& object, QLatin1String key, QJsonArray* target,
                             QString* error = nullptr);
[[nodiscard]] bool readFiniteNumber(const QJsonObject& object, QLatin1String key, double* target,
                                    QString* error = nullptr);
// A whole number from 1 to the largest int; 1.0 is one, 1.5 is not.
[[nodiscard]] bool readPositiveInteger(const QJsonObject& object, QLatin1String key, int* target,
                                       QString* error = nullptr);

// Puts `message` into `error` when that is given; gives false, for `return fail(...)`.
bool fail(QString* error, const QString& message);

} // namespace MinibarHelperProtocol
