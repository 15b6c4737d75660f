#include "hostdb/sample_vehicle.h"

#include <algorithm>

namespace qbx {

namespace {

constexpr SampleMake kVehicleMakes[] = {
    {"Ford", {"Fiesta", "Focus", "Kuga", "Transit"}},
    {"Vauxhall", {"Astra", "Corsa", "Vectra", "Vivaro"}},
    {"Volkswagen", {"Golf", "Polo", "Passat", "Transporter"}},
    {"BMW", {"118d", "320d", "520d", "X3"}},
    {"Audi", {"A1", "A3", "A4", "Q5"}},
    {"Mercedes-Benz", {"A 180", "C 220", "E 220", "Sprinter"}},
    {"Toyota", {"Yaris", "Corolla", "Aygo", "Prius"}},
    {"Nissan", {"Micra", "Juke", "Qashqai", "Leaf"}},
    {"Peugeot", {"208", "308", "3008", "Partner"}},
    {"Renault", {"Clio", "Megane", "Captur", "Trafic"}},
    {"Citroen", {"C1", "C3", "C4 Picasso", "Berlingo"}},
    {"Honda", {"Jazz", "Civic", "CR-V", "HR-V"}},
    {"Hyundai", {"i10", "i20", "i30", "Tucson"}},
    {"Kia", {"Picanto", "Rio", "Ceed", "Sportage"}},
    {"Skoda", {"Fabia", "Octavia", "Superb", "Yeti"}},
    {"SEAT", {"Ibiza", "Leon", "Ateca", "Alhambra"}},
    {"Fiat", {"500", "Panda", "Punto", "Ducato"}},
    {"Mini", {"One", "Cooper", "Cooper S", "Countryman"}},
    {"Land Rover", {"Defender", "Discovery", "Freelander", "Evoque"}},
    {"Jaguar", {"XE", "XF", "X-Type", "F-Pace"}},
    {"Volvo", {"V40", "V60", "XC60", "XC90"}},
    {"Mazda", {"2", "3", "CX-5", "MX-5"}},
    {"Suzuki", {"Alto", "Swift", "Vitara", "Ignis"}},
    {"Dacia", {"Sandero", "Duster", "Logan", "Jogger"}},
    {"Mitsubishi", {"Colt", "Outlander", "L200", "ASX"}},
    {"Subaru", {"Impreza", "Forester", "Outback", "XV"}},
    {"Lexus", {"CT 200h", "IS 300h", "NX 300h", "RX 450h"}},
    {"Porsche", {"911", "Boxster", "Cayenne", "Macan"}},
    {"Alfa Romeo", {"Mito", "Giulietta", "147", "Stelvio"}},
    {"Tesla", {"Model 3", "Model S", "Model X", "Model Y"}},
};
constexpr SampleMake kBoatMakes[] = {{"Fairhaven", {"24", "27 Cruiser", "31", "Fisher 19"}},
                                     {"Saltmarsh", {"Dory", "Weekender", "28 Ketch", "Tender"}}};
constexpr SampleMake kEngineMakes[] = {
    {"Yanmar", {"1GM10", "2YM15", "3YM30", "4JH57"}}, {"Volvo Penta", {"D1-20", "D2-40", "MD2030", "TAMD41"}},
    {"Beta Marine", {"14", "20", "30", "43"}},        {"Mercury", {"F6", "F15", "F40", "F100"}},
    {"Nanni", {"N2.14", "N3.30", "N4.38", "N4.60"}},  {"Perkins", {"4108", "4236", "M50", "Prima M80"}},
};

/// "TK14 VWX": two letters, the half-year of the registration, three letters.
std::string CarRegistration(RandomSource& random, int year) {
  constexpr std::string_view kUnissued = "JTU";
  constexpr std::string_view kLetters = "ABCDEFGHJKLMNOPRSTUVWXYZ";
  const int half = year % 100 + (random.Chance(50) ? 50 : 0);
  std::string text{random.Pick(kUnissued), random.Pick(kLetters), static_cast<char>('0' + half / 10 % 10),
                   static_cast<char>('0' + half % 10), ' '};
  for (int letter = 0; letter < 3; ++letter)
    text += random.Pick(kLetters);
  return text;
}

/// Young vehicles are more frequent than old ones.
int VehicleYear(RandomSource& random, QDate asOf) {
  const int age = std::min(random.Between(0, 20), random.Between(0, 20));
  return asOf.year() - age;
}

void GiveRecalls(SampleVehicle& vehicle, RandomSource& random, QDate asOf) {
  const bool needsMot = asOf.year() - vehicle.year >= 3;
  // Some dates are overdue; the others are spread over the coming year.
  if (needsMot && random.Chance(95)) vehicle.recalls[0] = asOf.addDays(random.Between(-40, 325));
  if (random.Chance(80)) vehicle.recalls[1] = asOf.addDays(random.Between(-60, 365));
  for (std::size_t recall = 2; recall < vehicle.recalls.size(); ++recall)
    if (random.Chance(25)) vehicle.recalls[recall] = asOf.addDays(random.Between(-90, 1095));
}

}  // namespace

std::span<const SampleMake> VehicleMakes() {
  return kVehicleMakes;
}
std::span<const SampleMake> EngineMakes() {
  return kEngineMakes;
}

SampleVehicle MakeVehicle(RandomSource& random, QDate asOf) {
  SampleVehicle vehicle;
  // The first makes of the table are the frequent ones.
  const int last = static_cast<int>(std::size(kVehicleMakes)) - 1;
  const SampleMake& make = kVehicleMakes[std::min(random.Between(0, last), random.Between(0, last))];
  vehicle.make = make.name;
  vehicle.model = random.Pick(make.models);
  vehicle.year = VehicleYear(random, asOf);
  vehicle.registration = CarRegistration(random, vehicle.year);
  const int age = asOf.year() - vehicle.year;
  if (random.Chance(92)) vehicle.mileage = age * random.Between(5000, 11000) + random.Between(50, 6000);
  GiveRecalls(vehicle, random, asOf);
  return vehicle;
}

SampleVehicle MakeBoat(RandomSource& random, QDate asOf) {
  SampleVehicle boat;
  const SampleMake& make = random.Pick(kBoatMakes);
  boat.make = make.name;
  boat.model = random.Pick(make.models);
  boat.year = VehicleYear(random, asOf);
  boat.registration = "SSR " + std::to_string(random.Between(10000, 99999));
  boat.mileage = random.Between(20, 2500);
  if (random.Chance(70)) boat.recalls[1] = asOf.addDays(random.Between(-60, 365));
  return boat;
}

SampleVehicle MakeEngine(RandomSource& random, const SampleVehicle& boat) {
  SampleVehicle engine = boat;
  const SampleMake& make = random.Pick(kEngineMakes);
  engine.make = make.name;
  engine.model = random.Pick(make.models);
  return engine;
}

}  // namespace qbx
