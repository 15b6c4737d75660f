#include "consent/store_world.h"

#include "consent/host_statement.h"

namespace qbx::consent {
namespace {

void StoreLists(const World& world, Session& database) {
  HostStatement type(database, "INSERT INTO Customer_Types VALUES (?, ?)");
  for (int i = 0; i < world.types.size(); ++i)
    (type << Number(i + 1) << Text(world.types[i])).Run();
  HostStatement source(database, "INSERT INTO Enquiry_Sources VALUES (?, ?)");
  for (int i = 0; i < world.sources.size(); ++i)
    (source << Number(i + 1) << Text(world.sources[i])).Run();
}

void StoreCustomers(const World& world, Session& database) {
  HostStatement row(
      database,
      "INSERT INTO Customers (Customer, Title, Firstname, Lastname, Contact, Mobile, Email, Address, Customer_Type_ID, "
      "Enquiry_Source_ID, No_Marketing, Consent_Response, Can_Send_SMS, Can_Send_Email, Can_Send_Letter) "
      "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)");
  for (const auto& [key, c] : world.customers) {
    row << Number(key) << c.title << c.firstname << Text(c.lastname) << c.contact << c.mobile << c.email << c.address;
    row << (c.type > 0 ? Number(c.type) : Number()) << (c.source > 0 ? Number(c.source) : Number());
    row << Number(c.noMarketing) << c.consent << c.canSms << c.canEmail << c.canLetter;
    row.Run();
  }
}

void StoreVehicles(const World& world, Session& database) {
  HostStatement row(database, "INSERT INTO Vehicles VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)");
  for (const Vehicle& v : world.vehicles) {
    row << Number(v.key) << Text(v.registration) << (v.customer > 0 ? Number(v.customer) : Number());
    row << v.make << v.model << v.year << v.mileage;
    for (const QDate& due : v.due)
      row << due;
    row.Run();
  }
  HostStatement make(database, "INSERT INTO Makes VALUES (?, ?, 0)");
  (make << Number(1) << Text(QStringLiteral("Ford"))).Run();
  (make << Number(2) << Text(QStringLiteral("Audi"))).Run();
}

void StoreInvoices(const World& world, Session& database) {
  HostStatement row(
      database, "INSERT INTO Services (RecordID, Record_Type, Invoice_Date, Customer, Total) VALUES (?, ?, ?, ?, ?)");
  int key = 0;
  for (const Invoice& invoice : world.invoices)
    (row << Number(++key) << Number(invoice.kind) << invoice.day << Number(invoice.customer) << invoice.pence / 100.0)
        .Run();
}

}  // namespace

void StoreWorld(const World& world, const ServerPorts& ports, Session& database) {
  database.Begin();
  StoreLists(world, database);
  StoreCustomers(world, database);
  StoreVehicles(world, database);
  StoreInvoices(world, database);
  HostStatement(
      database,
      "UPDATE _Options SET SMS_ClientID = 'GARAGE', SMS_ClientPassword = 'gate', Reminder_From_SMS = 'Garage', "
      "Reminder_From_Name = 'Hill Garage', Reminder_From_Email = 'office@hill.test', SMTP_Server = '127.0.0.1', "
      "SMTP_UserName = 'garage', SMTP_Password = 'mail', Timeout = 30")
      .Run();
  (HostStatement(database, "UPDATE _Options SET SMS_Server = ?, SMTP_Port = ?")
   << Text(QStringLiteral("http://127.0.0.1:%1").arg(ports.http)) << Text(QString::number(ports.smtp)))
      .Run();
  StoreSettings(world.settings, database);
  database.Commit();
}

void StoreConsent(const Customer& customer, Session& database) {
  HostStatement row(
      database,
      "UPDATE Customers SET No_Marketing = ?, Consent_Response = ?, Can_Send_SMS = ?, Can_Send_Email = ?, "
      "Can_Send_Letter = ? WHERE Customer = ?");
  row << Number(customer.noMarketing) << customer.consent << customer.canSms << customer.canEmail << customer.canLetter;
  row << Number(customer.key);
  row.Run();
}

void RemoveCustomer(int customer, Session& database) {
  (HostStatement(database, "DELETE FROM Customers WHERE Customer = ?") << Number(customer)).Run();
}

void StoreSettings(const Settings& settings, Session& database) {
  HostStatement row(database, "UPDATE _Options SET Only_Send_Comms_When_Opted_In = ?, Using_Vrelo = ?");
  (row << Number(settings.onlyOptedIn) << Number(settings.usingPlatform)).Run();
}

}  // namespace qbx::consent
