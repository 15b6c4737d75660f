#include "hostdb/sample_garage.h"

#include "hostdb/sample_invoices.h"
#include "hostdb/sample_person.h"
#include "hostdb/sample_settings.h"
#include "hostdb/sample_vehicle.h"
#include "sqlite/sqlite_file.h"

namespace qbx {

namespace {

constexpr int kFirstCustomer = 1001;
constexpr int kAwkwardEvery = 50;
constexpr int kMotWindowDays = 50;

std::string IsoDay(QDate date) {
  return date.toString(Qt::ISODate).toStdString();
}

void AddText(SqliteStatement& statement, const std::string& text) {
  if (text.empty())
    statement.AddNull();
  else
    statement.Add(text);
}

void AddNumber(SqliteStatement& statement, std::optional<int> number) {
  if (number)
    statement.Add(qint64{*number});
  else
    statement.AddNull();
}

/// Writes the customers of a garage one by one, with all their records.
class GarageWriter {
 public:
  GarageWriter(sqlite3* database, const SampleGarageSettings& settings)
      : settings_(settings),
        customer_(database, "INSERT INTO Customers VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"),
        vehicle_(
            database,
            "INSERT INTO Vehicles (Vehicle, Customer, Make, Model, Year, Last_Mileage, Recall_Date1, Recall_Date2, Recall_Date3, Recall_Date4, Recall_Date5, Recall_Date6) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"),
        engine_(database,
                "INSERT INTO Engines (Vehicle, Customer, Make, Model, Year, Last_Mileage) VALUES (?, ?, ?, ?, ?, ?)"),
        service_(database,
                 "INSERT INTO Services (Record_Type, Invoice_Date, Customer, Vehicle, Total) VALUES (?, ?, ?, ?, ?)") {}

  /// \param index  0 for the first customer
  void Write(int index) {
    const int customer = kFirstCustomer + index;
    RandomSource random(settings_.seed, static_cast<quint64>(customer));
    SamplePerson person = MakePerson(random, customer);
    CustomerHabit habit = ChooseHabit(random);
    const bool awkward = index % kAwkwardEvery == kAwkwardEvery - 1;
    const int kind = awkward ? index / kAwkwardEvery % AwkwardKinds() : -1;
    if (awkward) MakeAwkward(person, kind);
    // The saved campaigns must reach recipients that the sandbox refuses, or nobody would see a failure.
    const bool willFail = awkward && kind < kFailingKinds;
    if (willFail) habit = CustomerHabit::kLapsed;

    WriteCustomer(random, customer, person);
    WriteVehicles(random, customer, willFail);
    WriteInvoices(random, customer, habit);
  }

 private:
  void WriteCustomer(RandomSource& random, int customer, const SamplePerson& person) {
    customer_.Add(qint64{customer});
    for (const std::string* text :
         {&person.title, &person.firstname, &person.lastname, &person.company, &person.contact, &person.address,
          &person.postcode, &person.telephone, &person.mobile, &person.email})
      AddText(customer_, *text);
    // The first entry of a list is the usual one.
    AddNumber(customer_, random.Chance(60) ? 1 : random.Between(1, kSampleCustomerTypes));
    AddNumber(customer_, random.Chance(15) ? std::nullopt : std::optional(random.Between(1, kSampleEnquirySources)));
    customer_.Add(qint64{person.noMarketing ? 1 : 0});
    for (std::optional<int> answer : {person.consent, person.canSendSms, person.canSendEmail, person.canSendLetter})
      AddNumber(customer_, answer);
    customer_.Run();
  }

  void WriteVehicles(RandomSource& random, int customer, bool motIsDue) {
    registrations_.clear();
    for (int left = VehicleCount(random, motIsDue); left > 0; --left) {
      SampleVehicle vehicle = MakeVehicle(random, settings_.asOf);
      if (motIsDue) vehicle.recalls[0] = settings_.asOf.addDays(random.Between(1, kMotWindowDays));
      WriteVehicle(customer, vehicle);
    }
    if (!random.Chance(2)) return;
    const SampleVehicle boat = MakeBoat(random, settings_.asOf);
    WriteVehicle(customer, boat);
    WriteBase(engine_, customer, MakeEngine(random, boat));
    engine_.Run();
  }

  static int VehicleCount(RandomSource& random, bool atLeastOne) {
    const int share = random.Between(0, 199);
    if (share < 12) return atLeastOne ? 1 : 0;
    if (share < 150) return 1;
    if (share < 190) return 2;
    if (share < 198) return 3;
    return random.Between(4, 9);
  }

  static void WriteBase(SqliteStatement& statement, int customer, const SampleVehicle& vehicle) {
    statement.Add(vehicle.registration)
        .Add(qint64{customer})
        .Add(vehicle.make)
        .Add(vehicle.model)
        .Add(qint64{vehicle.year});
    AddNumber(statement, vehicle.mileage);
  }

  void WriteVehicle(int customer, const SampleVehicle& vehicle) {
    WriteBase(vehicle_, customer, vehicle);
    for (const QDate& recall : vehicle.recalls) {
      if (recall.isValid())
        vehicle_.Add(IsoDay(recall));
      else
        vehicle_.AddNull();
    }
    vehicle_.Run();
    registrations_.push_back(vehicle.registration);
  }

  void WriteInvoices(RandomSource& random, int customer, CustomerHabit habit) {
    MakeInvoices(random, habit, invoices_);
    for (const SampleInvoice& invoice : invoices_) {
      service_.Add(qint64{invoice.recordType})
          .Add(IsoDay(settings_.asOf.addDays(-invoice.daysAgo)))
          .Add(qint64{customer});
      if (registrations_.empty())
        service_.AddNull();
      else
        service_.Add(random.Pick(registrations_));
      service_.Add(invoice.pence / 100.0).Run();
    }
  }

  SampleGarageSettings settings_;
  SqliteStatement customer_;
  SqliteStatement vehicle_;
  SqliteStatement engine_;
  SqliteStatement service_;
  std::vector<std::string> registrations_;
  std::vector<SampleInvoice> invoices_;
};

}  // namespace

HostDatabaseProblem MakeSampleGarage(const QString& path, const SampleGarageSettings& settings, ExistingFile existing) {
  if (settings.customers < 0 || settings.customers > 100'000'000)
    return QStringLiteral("A sample garage has from 0 to 100,000,000 customers.");
  if (!settings.asOf.isValid()) return QStringLiteral("The day that the sample garage is made for is not a date.");
  return CreateHostDatabase(path, existing, [&settings](sqlite3* database) -> HostDatabaseProblem {
    FillSampleOptions(database);
    FillSampleLists(database);
    FillSampleCampaigns(database, settings.asOf);
    GarageWriter writer(database, settings);
    for (int index = 0; index < settings.customers; ++index)
      writer.Write(index);
    return std::nullopt;
  });
}

}  // namespace qbx
