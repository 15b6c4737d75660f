// The vehicles of the sample garage.

#pragma once

#include <QDate>
#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "hostdb/random_source.h"

namespace qbx {

/// A make, with the models that the sample uses.
struct SampleMake {
  std::string_view name;
  std::array<std::string_view, 4> models;
};

[[nodiscard]] std::span<const SampleMake> VehicleMakes();
[[nodiscard]] std::span<const SampleMake> EngineMakes();

struct SampleVehicle {
  std::string registration;
  std::string_view make;
  std::string_view model;
  int year = 0;
  std::optional<int> mileage;
  std::array<QDate, 6> recalls;  ///< invalid: no date
};

/// A car or van. Registrations begin with a letter that no real registration begins with.
[[nodiscard]] SampleVehicle MakeVehicle(RandomSource& random, QDate asOf);
/// A boat. MakeEngine makes its engine.
[[nodiscard]] SampleVehicle MakeBoat(RandomSource& random, QDate asOf);
/// The engine of a boat. The mileage is the hours run.
[[nodiscard]] SampleVehicle MakeEngine(RandomSource& random, const SampleVehicle& boat);

}  // namespace qbx
