// The company's options in the host database, and how each is read.

#pragma once

#include <QString>
#include <span>
#include <variant>

namespace qbx {

/// The level of the database's marketing module for which this program was made.
inline constexpr int kModuleSchemaLevel = 6;

/// The options as `OptionsLoader` read them. There is a member for each key, named as the key; a member that was never
/// read, or was NULL, is false, 0 or empty. Many options belong to the host product and are not used here.
struct Options {
  // Versions, read before the rows.
  int DatabaseVersion = 0;        ///< of the host database; 0 until loaded
  int ModuleDatabaseVersion = 0;  ///< of the marketing module in it; kModuleSchemaLevel when it fits this program
  bool ReadFailed = false;        ///< the last reading failed: members about consent may be missing

  // From the row of company "A".
  bool Boats = false;
  bool Trucks = false;
  bool TE = false;
  bool WE = false;
  int Models_Set = 0;
  bool Daybook_Profit = false;
  bool UseLastSupplier = false;
  bool QBX_Internal = false;
  bool Taxi = false;
  bool Refuse = false;
  bool CapsNewRows = false;
  bool MultipleAddresses = false;
  bool ShowCustEnqSource = false;
  bool BookingsCanSpan = false;
  bool Bookings_Day_Span = false;
  int DocsListFontSize = 0;
  bool ShowMakeOnDocList = false;
  bool ShowModelOnDocList = false;
  bool ShowMakeAndModelOnDocList = false;
  bool ShowCustomerOnDocList = false;
  bool ShowFleetNoOnDocList = false;
  bool ShowVINOnDocList = false;
  bool ShowMechanicOnDocList = false;
  bool ShowJobDetailsOnDocList = false;
  bool ShowJobType = false;
  bool Email_Send_BCC = false;     ///< send a blind copy of each e-mail
  QString Email_Send_BCC_Address;  ///< where the blind copies go
  bool Using_Vrelo = false;        ///< the marketing-platform service is in use
  bool Only_Send_Comms_When_Opted_In = false;
  bool Include_Vrelo_Shortcode = false;  ///< add the platform short code to texts
  QString UpdateServer;
  bool MultiCompany = false;

  // From the company's own row.
  bool Force_Postcode_County = false;
  bool SMS = false;  ///< sending of texts is available
  bool SMS_Receive = false;
  QString Customer;  ///< customer code, lower case
  int Timeout = 0;   ///< seconds, at least 3; the command time-out of the shared connection
  bool Caps_Parts = false;
  bool NoCoName = false;
  bool Mechanics_Bookings = false;
  bool Ireland_NCT = false;
  bool Caps_Vehicles = false;
  bool Caps_Refs = false;
  int ReferenceFormat1 = 0;
  int ReferenceFormat2 = 0;
  int SReferenceFormat1 = 0;
  int SReferenceFormat2 = 0;
  QString CompanyCode;
  bool Postcode = false;
  bool DVLA = false;
  bool Caps_Addresses = false;
  bool Caps_Invoices = false;
  bool Caps_Names = false;
  QString DVLA_ClientID;
  QString DVLA_Server;
  QString DVLA_Password;
  QString SMS_ClientID;        ///< account of the SMS gateway
  QString SMS_ClientPassword;  ///< its password
  QString SMS_Sender_ID;
  bool HireSettings = false;
  QString Reminder_From_Name;   ///< display name of the sender of e-mails
  QString Reminder_From_Email;  ///< address of the sender of e-mails
  QString Reminder_From_SMS;    ///< the sender name of texts as it is used; never empty once loaded
  QString SMS_Server;
  QString SMTP_Server;
  QString SMTP_Port;
  bool SMTP_UseSSL = false;
  bool SMTP_Authenticate = false;
  QString SMTP_UserName;
  QString SMTP_Password;  ///< in the clear; deciphered when stored with the marker "b64!/"
  QString SMTP_FromEmail;
  QString SMTP_ReplyTo;
  QString Company;
  QString Address;
  QString CompanyRegDetails;
  QString CoPostcode;
  QString CoTelNo;  ///< the own row's value, which replaces that of company "A"
  QString CoFaxNo;  ///< the own row's value; "vrm" in the row of company "A" marks the vehicle-sales edition
  QString CompanyID;
  QString Reminder3Name;
  QString Reminder4Name;
  QString Reminder5Name;
  QString Reminder6Name;
  QString DocPrefix;
  QString MMPrefix;
  QString MOT_Reminder_Name;     ///< name of the test-due reminder, "MOT" when none is set
  bool Accounts_Export = false;  ///< always false in the vehicle-sales edition

  // From the company's own row, for reports. A database without these columns is valid.
  bool DetailedReport = false;
  bool PrintMechanic = false;
  QString RemindersFont;
  int RemindersFontSize = 0;  ///< points, never 0 once loaded
  QString GoodsTerms;
  QString PaymentMethods;
  QString LabourDesc;
};

/// How a key's value is stored in the host database.
enum class OptionType { kBoolean, kInteger16, kInteger32, kText };

/// Which row of the options a key is read from.
enum class OptionSource { kCompanyA, kOwn };

/// What is done with a value beside storing it.
enum class OptionRule {
  kNone,
  kVehicleSalesMarker,  ///< "vrm" turns the vehicle-sales edition on
  kCustomerCode,        ///< becomes lower case; written to the INI file as well
  kTimeout,             ///< below 3 becomes 15; also set on the shared connection
  kSmsSender,           ///< empty or "The Garage" becomes SMS_Sender_ID, a blank one "The Garage"
  kMarkedSecret,        ///< deciphered when it starts with "b64!/"
  kTestReminderName,    ///< "MOT" when blank
  kNotVehicleSales,     ///< false in the vehicle-sales edition
  kReportFont,          ///< "Tahoma" when empty
  kReportFontSize,      ///< 10 when 0
};

/// One key. The list in reading order is `OptionKeys`.
struct OptionKey {
  const char* name;
  OptionType type;
  OptionSource source;
  std::variant<bool Options::*, int Options::*, QString Options::*> member;
  OptionRule rule = OptionRule::kNone;
  bool mayBeMissing = false;  ///< a result without this column is valid

  [[nodiscard]] bool IsSecret() const;  ///< whether it is a password, which must not be listed
};

/// The refusal to select or contact anybody when the options could not be read, because consent could not be checked.
inline constexpr char kOptionsUnreadText[] =
    "The company's settings could not be read, so it is not known whether only customers who opted in may be contacted. Nothing was done.";

/// Every key in the order of reading: first those of company "A", then those of the own row. "CoTelNo" and "CoFaxNo"
/// are in both.
[[nodiscard]] std::span<const OptionKey> OptionKeys();

/// A key's value as text: "True"/"False", decimal digits, or the text itself.
[[nodiscard]] QString OptionText(const Options& options, const OptionKey& key);

}  // namespace qbx
