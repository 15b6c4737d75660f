#include "hostdb/sample_settings.h"

#include "hostdb/sample_vehicle.h"
#include "sqlite/sqlite_file.h"

namespace qbx {

namespace {

constexpr std::string_view kCustomerTypes[kSampleCustomerTypes] = {
    "Retail", "Trade",      "Account",   "Fleet",    "Staff",           "Friends & Family",
    "Taxi",   "Motability", "Insurance", "Warranty", "Local Authority", "Classic Car Club"};
constexpr std::string_view kEnquirySources[kSampleEnquirySources] = {
    "Recommendation", "Website", "Passing By", "Local Paper",       "Radio",
    "Facebook",       "Google",  "Leaflet",    "Existing Customer", "Other"};

}  // namespace

void FillSampleOptions(sqlite3* database) {
  ExecuteSql(database, R"sql(
    UPDATE _Options SET
      Company = 'Hartley Motors', CompanyCode = 'A', CompanyID = 'SAMPLE', Customer = 'sample',
      Address = 'Unit 4' || char(13) || 'Mill Lane' || char(13) || 'Milbury' || char(13) || 'Northshire', CoPostcode = 'MB4 1AA',
      CoTelNo = '01632 960100', CoFaxNo = '01632 960101', CompanyRegDetails = 'A sample business',
      Timeout = 30,
      SMS = 1, SMS_ClientID = 'SANDBOX', SMS_ClientPassword = 'sandbox', SMS_Server = 'sms.invalid', SMS_Sender_ID = 'Hartley',
      Reminder_From_SMS = 'Hartley', Reminder_From_Name = 'Hartley Motors', Reminder_From_Email = 'reminders@example.com',
      SMTP_Server = 'mail.invalid', SMTP_Port = '25', SMTP_UseSSL = 0, SMTP_Authenticate = 0, SMTP_UserName = 'sandbox',
      SMTP_Password = 'sandbox', SMTP_FromEmail = '"Hartley Motors" <reminders@example.com>', SMTP_ReplyTo = 'reminders@example.com',
      Email_Send_BCC = 0, Using_Vrelo = 0, Only_Send_Comms_When_Opted_In = 1, QBX_Internal = 0,
      MOT_Reminder_Name = 'MOT', Reminder3Name = 'Cambelt', Reminder4Name = 'Air Conditioning', Reminder5Name = 'Brake Fluid',
      Reminder6Name = 'Warranty'
    WHERE Options_Company = 'A')sql");
}

void FillSampleLists(sqlite3* database) {
  SqliteStatement type(database, "INSERT INTO Customer_Types VALUES (?, ?)");
  for (qint64 id = 1; std::string_view description : kCustomerTypes)
    type.Add(id++).Add(description).Run();
  SqliteStatement source(database, "INSERT INTO Enquiry_Sources VALUES (?, ?)");
  for (qint64 id = 1; std::string_view description : kEnquirySources)
    source.Add(id++).Add(description).Run();

  constexpr qint64 kVehicleKind = 0;
  constexpr qint64 kEngineKind = 5;
  SqliteStatement make(database, "INSERT INTO Makes VALUES (?, ?, ?)");
  qint64 id = 1;
  for (const SampleMake& vehicle : VehicleMakes())
    make.Add(id++).Add(vehicle.name).Add(kVehicleKind).Run();
  for (const SampleMake& engine : EngineMakes())
    make.Add(id++).Add(engine.name).Add(kEngineKind).Run();
}

}  // namespace qbx
