#include "settings/options_loader.h"

#include "settings/edition_names.h"
#include "settings/member_value.h"
#include "util/date_text.h"
#include "util/text.h"

namespace qbx {
namespace {

constexpr char kDefaultSender[] = "The Garage";

QString ResolveSender(const QString& stored, const QString& senderId) {
  const QString garage = QString::fromLatin1(kDefaultSender);
  const QString sender = stored.isEmpty() || stored == garage ? senderId : stored;
  return TrimBlanks(sender).isEmpty() ? garage : sender;
}

}  // namespace

QString OptionsCall(const QString& companyCode) {
  return QStringLiteral("proc_selp__Option(%1)").arg(SqlQuoted(companyCode));
}

OptionsLoader::OptionsLoader(Statements& statements, IniFile& ini, HostCipher& cipher, StartupValues& startup,
                             EventContext& context, Options& options, Diagnostics diagnostics)
    : statements_(statements),
      ini_(ini),
      cipher_(cipher),
      startup_(startup),
      context_(context),
      options_(options),
      diagnostics_(diagnostics) {}

bool OptionsLoader::LoadOptions() {
  options_.ReadFailed = !ReadVersions() || !ReadRows();
  if (!options_.ReadFailed) {
    WorkOutEditionNames(startup_);
    return true;
  }
  if (statements_.Shared().WasOpen()) {
    diagnostics_.ui.ShowMessage({QStringLiteral("Error reading all settings data. The database may need updating."),
                                 MessageIcon::kExclamation});
  }
  return false;
}

bool OptionsLoader::ReadVersions() {
  Recordset row;
  if (statements_.dbOpenRec(row, QStringLiteral("proc__OptionVersion")) || row.Eof()) return false;
  const QString version = QStringLiteral("Version");
  const QString moduleVersion = QStringLiteral("Marketing_Version");
  if (row.ColumnIndex(version) < 0 || row.ColumnIndex(moduleVersion) < 0) return false;
  options_.DatabaseVersion = static_cast<int>(Statements::sysIsNull(row, version).ToInt());
  options_.ModuleDatabaseVersion = static_cast<int>(Statements::sysIsNull(row, moduleVersion).ToInt());
  context_.DatabaseVersion = options_.DatabaseVersion;
  if (options_.ModuleDatabaseVersion != kModuleSchemaLevel) TellUpdateNeeded();
  return true;
}

void OptionsLoader::TellUpdateNeeded() {
  const QString codes =
      QStringLiteral("Update Codes: P-%1, DB-%2").arg(kModuleSchemaLevel).arg(options_.ModuleDatabaseVersion);
  diagnostics_.ui.ShowMessage(
      {QStringLiteral("The ") + startup_.title + QStringLiteral(" needs to be updated!") +
           QStringLiteral("\r\rAt least one existing system, and the server database has been updated.") +
           QStringLiteral("\r\rIf you continue to use the program, unexpected errors may occur.") +
           QStringLiteral("\r\rChoose Check for Program Updates from the main QBX Management system Help menu.") +
           QStringLiteral("\r\r") + codes,
       MessageIcon::kExclamation});
  diagnostics_.log.WriteLog(DayText(diagnostics_.clock.Today()) + QStringLiteral("Marketing Module Update Required. ") +
                            codes);
}

bool OptionsLoader::ReadRows() {
  const QString companyA = QStringLiteral("A");
  Recordset row;
  if (!OpenRow(companyA, row) || !ReadKeys(row, OptionSource::kCompanyA)) return false;
  if (startup_.companyCode != companyA && !OpenRow(startup_.companyCode, row)) return false;
  return ReadKeys(row, OptionSource::kOwn);
}

bool OptionsLoader::OpenRow(const QString& companyCode, Recordset& row) {
  return !statements_.dbOpenRec(row, OptionsCall(companyCode)) && !row.Eof();
}

bool OptionsLoader::ReadKeys(const Recordset& row, OptionSource source) {
  for (const OptionKey& key : OptionKeys()) {
    if (key.source != source) continue;
    const QString name = QString::fromLatin1(key.name);
    const bool present = row.ColumnIndex(name) >= 0;
    if (!present && !key.mayBeMissing) return false;
    const Value value = present ? Statements::sysIsNull(row, name) : Value();
    AssignMember(options_, key.member, value);
    ApplyRule(key.rule);
  }
  return true;
}

void OptionsLoader::ApplyRule(OptionRule rule) {
  switch (rule) {
    case OptionRule::kNone:
      break;
    case OptionRule::kVehicleSalesMarker:
      if (options_.CoFaxNo == QStringLiteral("vrm")) startup_.edition.vehicleSales = true;
      break;
    case OptionRule::kCustomerCode:
      options_.Customer = options_.Customer.toLower();
      FollowCustomerCode();
      break;
    case OptionRule::kTimeout:
      if (options_.Timeout < 3) options_.Timeout = 15;
      statements_.Shared().SetCommandTimeout(options_.Timeout);
      break;
    case OptionRule::kSmsSender:
      options_.Reminder_From_SMS = ResolveSender(options_.Reminder_From_SMS, options_.SMS_Sender_ID);
      break;
    case OptionRule::kMarkedSecret:
      options_.SMTP_Password = cipher_.Reveal(options_.SMTP_Password, QStringLiteral("option SMTP_Password"));
      break;
    case OptionRule::kTestReminderName:
      if (TrimBlanks(options_.MOT_Reminder_Name).isEmpty()) options_.MOT_Reminder_Name = QStringLiteral("MOT");
      break;
    case OptionRule::kNotVehicleSales:
      if (startup_.edition.vehicleSales) options_.Accounts_Export = false;
      break;
    case OptionRule::kReportFont:
      if (options_.RemindersFont.isEmpty()) options_.RemindersFont = QStringLiteral("Tahoma");
      break;
    case OptionRule::kReportFontSize:
      if (options_.RemindersFontSize == 0) options_.RemindersFontSize = 10;
      break;
  }
}

void OptionsLoader::FollowCustomerCode() {
  startup_.customerCode = options_.Customer;
  const QString section = QStringLiteral("App");
  const QString key = QStringLiteral("Customer");
  if (ini_.Read(section, key) != options_.Customer) ini_.Write(section, key, options_.Customer);
}

}  // namespace qbx
