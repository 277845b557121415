#pragma once

#include "controls/BaseUnitAdapter.h"

#include <memory>

// The quantities of the product: tables over Controls::BaseUnitAdapter, each with the text that names it.
namespace Adapters {

// GHz, MHz, kHz, Hz; base unit Hz.
class FrequencyUnitAdapter : public Controls::BaseUnitAdapter
{
    Q_OBJECT
public:
    explicit FrequencyUnitAdapter(QObject* parent = nullptr);
    [[nodiscard]] static QString adapterType();
};

// As FrequencyUnitAdapter, but an edit counts when editing has finished.
class OutputFrequencyUnitAdapter final : public Controls::BaseUnitAdapter
{
    Q_OBJECT
public:
    explicit OutputFrequencyUnitAdapter(QObject* parent = nullptr);
    [[nodiscard]] static QString adapterType();
};

// dBm.
class PowerUnitAdapter final : public Controls::BaseUnitAdapter
{
    Q_OBJECT
public:
    explicit PowerUnitAdapter(QObject* parent = nullptr);
    [[nodiscard]] static QString adapterType();
};

// dB.
class PowerStepUnitAdapter final : public Controls::BaseUnitAdapter
{
    Q_OBJECT
public:
    explicit PowerStepUnitAdapter(QObject* parent = nullptr);
    [[nodiscard]] static QString adapterType();
};

// s, ms, µs, ns, ps; base unit s.
class TimeUnitAdapter final : public Controls::BaseUnitAdapter
{
    Q_OBJECT
public:
    explicit TimeUnitAdapter(QObject* parent = nullptr);
    [[nodiscard]] static QString adapterType();
};

// A new adapter of this type; a plain number without units for an empty or unknown type.
[[nodiscard]] std::unique_ptr<Controls::BaseUnitAdapter> createAdapter(const QString& adapterType);

} // namespace Adapters
