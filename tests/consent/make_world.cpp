#include "consent/make_world.h"

namespace qbx::consent {
namespace {

constexpr int kFirstCustomer = 1001;

/// One of the values of a consent flag. Most customers consent, so that the rounds have much to send.
Number Answer(RandomSource& random, std::initializer_list<Number> others, int yesPercent) {
  if (random.Chance(yesPercent)) return 1;
  return random.Pick(std::vector<Number>(others));
}

Text Mobile(RandomSource& random, const World& world, int key) {
  const QString good = QStringLiteral("0770%1").arg(key, 7, 10, QLatin1Char('0'));
  if (random.Chance(72)) return good;
  switch (random.Between(0, 13)) {
    case 0:
      return {};
    case 1:
      return QString();
    case 2:
      return QStringLiteral("   ");
    case 3:
      return QStringLiteral("07700");  // too short for the rule
    case 4:
      return QStringLiteral("07700 12");  // long enough for the rule, too short to be sent to
    case 5:
      return QStringLiteral("ask at home");
    case 6:
      return good + QStringLiteral(" (work)");
    case 7:
      return good.left(5) + u' ' + good.mid(5) + QStringLiteral(" Anna");
    case 8:
      return good + QStringLiteral("; 07700900999");
    case 9:
      return good + QStringLiteral(" / 01632 960999");
    case 10:
      return QStringLiteral("+44") + good.mid(1);
    case 11:
      return good + QStringLiteral("  ");
    case 12:
      return QStringLiteral("12345     ");  // nine characters with its blanks, five without
    default:
      return world.customers.empty() ? Text(good) : world.customers.rbegin()->second.mobile;  // a couple
  }
}

Text Email(RandomSource& random, const World& world, int key) {
  const QString good = QStringLiteral("c%1@x.test").arg(key);
  if (random.Chance(72)) return good;
  switch (random.Between(0, 10)) {
    case 0:
      return {};
    case 1:
      return QString();
    case 2:
      return QStringLiteral("  ");
    case 3:
      return QStringLiteral("no-address-%1").arg(key);
    case 4:
      return QStringLiteral("@x.test");
    case 5:
      return QStringLiteral("a@b");
    case 6:
      return good + QStringLiteral("; d%1@x.test;;").arg(key);
    case 7:
      return QStringLiteral(" ; ") + good;
    case 8:
      return good + QStringLiteral("\r\nBcc: everybody@x.test");
    case 9:
      return good + QStringLiteral("  ");
    default:
      return world.customers.empty() ? Text(good) : world.customers.rbegin()->second.email;
  }
}

/// Uses no random numbers, so that each seed keeps its garage from before there were addresses.
Text Address(int key) {
  if (key % 7 == 0) return {};
  if (key % 7 == 1) return QStringLiteral("The Old Mill");
  return QStringLiteral("%1 High Street\rMilbury\rMB1 2AB").arg(key);
}

Text Contact(RandomSource& random) {
  static const std::vector<Text> kContacts = {{},
                                              {},
                                              {},
                                              QString(),
                                              QStringLiteral("   "),
                                              QStringLiteral("Mrs O'Neil"),
                                              QStringLiteral(" Zoë "),
                                              QStringLiteral("£5 & Söhne"),
                                              QStringLiteral("Anne, owner of a {make}"),
                                              QStringLiteral("{odd} % _ \"quoted\"")};
  return random.Pick(kContacts);
}

Customer MakeCustomer(RandomSource& random, const World& world, int key) {
  Customer customer;
  customer.key = key;
  customer.title = random.Pick(std::vector<Text>{{}, QString(), QStringLiteral("Mr"), QStringLiteral("Dr ")});
  customer.firstname = random.Pick(std::vector<Text>{{}, QStringLiteral("Ada"), QStringLiteral("Jürgen")});
  customer.lastname = QStringLiteral("Nr%1").arg(key);
  customer.contact = Contact(random);
  customer.mobile = Mobile(random, world, key);
  customer.email = Email(random, world, key);
  customer.address = Address(key);
  customer.type = random.Between(0, static_cast<int>(world.types.size()));
  customer.source = random.Between(0, static_cast<int>(world.sources.size()));
  customer.noMarketing = random.Chance(12);
  customer.consent = Answer(random, {{}, 0, 2}, 55);
  customer.canSms = Answer(random, {{}, 0}, 60);
  customer.canEmail = Answer(random, {{}, 0}, 60);
  customer.canLetter = Answer(random, {{}, 0}, 30);
  return customer;
}

Vehicle MakeVehicle(RandomSource& random, int key, int customer) {
  static const std::vector<Text> kMakes = {QStringLiteral("Ford"),  QStringLiteral("AUDI"),    QStringLiteral("Bmw"),
                                           QStringLiteral("ford "), QStringLiteral("Citroën"), {}};
  static const std::vector<Text> kModels = {
      QStringLiteral("Focus"), QStringLiteral("A4 Avant"), QStringLiteral("C%4 focus"), QString(), {}};
  Vehicle vehicle;
  vehicle.key = key;
  vehicle.registration = QStringLiteral("R%1").arg(key);
  vehicle.customer = customer;
  vehicle.make = random.Pick(kMakes);
  vehicle.model = random.Pick(kModels);
  vehicle.year = random.Chance(15) ? Number() : random.Chance(10) ? Number(0) : Number(random.Between(2008, 2020));
  vehicle.mileage = random.Chance(15) ? Number() : Number(random.Between(0, 12) * 10000);
  for (QDate& due : vehicle.due)
    if (random.Chance(60)) due = QDate(2026, 1, 1).addDays(random.Between(0, 364));
  return vehicle;
}

}  // namespace

World MakeWorld(RandomSource& random, int customers) {
  World world;
  world.types = {QStringLiteral("Retail"), QStringLiteral("Trade"), QStringLiteral("Fleet ")};
  world.sources = {QStringLiteral("Radio"), QStringLiteral("Website")};
  world.settings = {.onlyOptedIn = random.Chance(35), .usingPlatform = random.Chance(50)};
  for (int i = 0; i < customers; ++i) {
    const int key = kFirstCustomer + i;
    world.customers.emplace_hint(world.customers.end(), key, MakeCustomer(random, world, key));
    for (int n = random.Between(0, 2); n > 0; --n) {
      const int owner = random.Chance(95) ? key : 0;
      world.vehicles.push_back(MakeVehicle(random, static_cast<int>(world.vehicles.size()) + 1, owner));
    }
    for (int n = random.Between(0, 4); n > 0; --n) {
      world.invoices.push_back({.customer = key,
                                .kind = random.Chance(85) ? 0 : 1,
                                .day = QDate(2024, 1, 1).addDays(random.Between(0, 790)),
                                .pence = random.Between(-20, 400) * 250});
    }
  }
  return world;
}

}  // namespace qbx::consent
