// The table of option keys.

#include "settings/options.h"

#include <array>
#include <string_view>

namespace qbx {
namespace {

using enum OptionType;
using enum OptionSource;
using enum OptionRule;

constexpr auto kOptionKeys = std::to_array<OptionKey>({
    {"Boats", kBoolean, kCompanyA, &Options::Boats},
    {"Trucks", kBoolean, kCompanyA, &Options::Trucks},
    {"TE", kBoolean, kCompanyA, &Options::TE},
    {"WE", kBoolean, kCompanyA, &Options::WE},
    {"Models_Set", kInteger16, kCompanyA, &Options::Models_Set},
    {"CoTelNo", kText, kCompanyA, &Options::CoTelNo},
    {"CoFaxNo", kText, kCompanyA, &Options::CoFaxNo, kVehicleSalesMarker},
    {"Daybook_Profit", kBoolean, kCompanyA, &Options::Daybook_Profit},
    {"UseLastSupplier", kBoolean, kCompanyA, &Options::UseLastSupplier},
    {"QBX_Internal", kBoolean, kCompanyA, &Options::QBX_Internal},
    {"Taxi", kBoolean, kCompanyA, &Options::Taxi},
    {"Refuse", kBoolean, kCompanyA, &Options::Refuse},
    {"CapsNewRows", kBoolean, kCompanyA, &Options::CapsNewRows},
    {"MultipleAddresses", kBoolean, kCompanyA, &Options::MultipleAddresses},
    {"ShowCustEnqSource", kBoolean, kCompanyA, &Options::ShowCustEnqSource},
    {"BookingsCanSpan", kBoolean, kCompanyA, &Options::BookingsCanSpan},
    {"Bookings_Day_Span", kBoolean, kCompanyA, &Options::Bookings_Day_Span},
    {"DocsListFontSize", kInteger16, kCompanyA, &Options::DocsListFontSize},
    {"ShowMakeOnDocList", kBoolean, kCompanyA, &Options::ShowMakeOnDocList},
    {"ShowModelOnDocList", kBoolean, kCompanyA, &Options::ShowModelOnDocList},
    {"ShowMakeAndModelOnDocList", kBoolean, kCompanyA, &Options::ShowMakeAndModelOnDocList},
    {"ShowCustomerOnDocList", kBoolean, kCompanyA, &Options::ShowCustomerOnDocList},
    {"ShowFleetNoOnDocList", kBoolean, kCompanyA, &Options::ShowFleetNoOnDocList},
    {"ShowVINOnDocList", kBoolean, kCompanyA, &Options::ShowVINOnDocList},
    {"ShowMechanicOnDocList", kBoolean, kCompanyA, &Options::ShowMechanicOnDocList},
    {"ShowJobDetailsOnDocList", kBoolean, kCompanyA, &Options::ShowJobDetailsOnDocList},
    {"ShowJobType", kBoolean, kCompanyA, &Options::ShowJobType},
    {"Email_Send_BCC", kBoolean, kCompanyA, &Options::Email_Send_BCC},
    {"Email_Send_BCC_Address", kText, kCompanyA, &Options::Email_Send_BCC_Address},
    {"Using_Vrelo", kBoolean, kCompanyA, &Options::Using_Vrelo},
    {"Only_Send_Comms_When_Opted_In", kBoolean, kCompanyA, &Options::Only_Send_Comms_When_Opted_In},
    {"Include_Vrelo_Shortcode", kBoolean, kCompanyA, &Options::Include_Vrelo_Shortcode},
    {"UpdateServer", kText, kCompanyA, &Options::UpdateServer},
    {"MultiCompany", kBoolean, kCompanyA, &Options::MultiCompany},
    {"Force_Postcode_County", kBoolean, kOwn, &Options::Force_Postcode_County},
    {"SMS", kBoolean, kOwn, &Options::SMS},
    {"SMS_Receive", kBoolean, kOwn, &Options::SMS_Receive},
    {"Customer", kText, kOwn, &Options::Customer, kCustomerCode},
    {"Timeout", kInteger32, kOwn, &Options::Timeout, kTimeout},
    {"Caps_Parts", kBoolean, kOwn, &Options::Caps_Parts},
    {"NoCoName", kBoolean, kOwn, &Options::NoCoName},
    {"Mechanics_Bookings", kBoolean, kOwn, &Options::Mechanics_Bookings},
    {"Ireland_NCT", kBoolean, kOwn, &Options::Ireland_NCT},
    {"Caps_Vehicles", kBoolean, kOwn, &Options::Caps_Vehicles},
    {"Caps_Refs", kBoolean, kOwn, &Options::Caps_Refs},
    {"ReferenceFormat1", kInteger16, kOwn, &Options::ReferenceFormat1},
    {"ReferenceFormat2", kInteger16, kOwn, &Options::ReferenceFormat2},
    {"SReferenceFormat1", kInteger16, kOwn, &Options::SReferenceFormat1},
    {"SReferenceFormat2", kInteger16, kOwn, &Options::SReferenceFormat2},
    {"CompanyCode", kText, kOwn, &Options::CompanyCode},
    {"Postcode", kBoolean, kOwn, &Options::Postcode},
    {"DVLA", kBoolean, kOwn, &Options::DVLA},
    {"Caps_Addresses", kBoolean, kOwn, &Options::Caps_Addresses},
    {"Caps_Invoices", kBoolean, kOwn, &Options::Caps_Invoices},
    {"Caps_Names", kBoolean, kOwn, &Options::Caps_Names},
    {"DVLA_ClientID", kText, kOwn, &Options::DVLA_ClientID},
    {"DVLA_Server", kText, kOwn, &Options::DVLA_Server},
    {"DVLA_Password", kText, kOwn, &Options::DVLA_Password},
    {"SMS_ClientID", kText, kOwn, &Options::SMS_ClientID},
    {"SMS_ClientPassword", kText, kOwn, &Options::SMS_ClientPassword},
    {"SMS_Sender_ID", kText, kOwn, &Options::SMS_Sender_ID},
    {"HireSettings", kBoolean, kOwn, &Options::HireSettings},
    {"Reminder_From_Name", kText, kOwn, &Options::Reminder_From_Name},
    {"Reminder_From_Email", kText, kOwn, &Options::Reminder_From_Email},
    {"Reminder_From_SMS", kText, kOwn, &Options::Reminder_From_SMS, kSmsSender},
    {"SMS_Server", kText, kOwn, &Options::SMS_Server},
    {"SMTP_Server", kText, kOwn, &Options::SMTP_Server},
    {"SMTP_Port", kText, kOwn, &Options::SMTP_Port},
    {"SMTP_UseSSL", kBoolean, kOwn, &Options::SMTP_UseSSL},
    {"SMTP_Authenticate", kBoolean, kOwn, &Options::SMTP_Authenticate},
    {"SMTP_UserName", kText, kOwn, &Options::SMTP_UserName},
    {"SMTP_Password", kText, kOwn, &Options::SMTP_Password, kMarkedSecret},
    {"SMTP_FromEmail", kText, kOwn, &Options::SMTP_FromEmail},
    {"SMTP_ReplyTo", kText, kOwn, &Options::SMTP_ReplyTo},
    {"Company", kText, kOwn, &Options::Company},
    {"Address", kText, kOwn, &Options::Address},
    {"CompanyRegDetails", kText, kOwn, &Options::CompanyRegDetails},
    {"CoPostcode", kText, kOwn, &Options::CoPostcode},
    {"CoTelNo", kText, kOwn, &Options::CoTelNo},
    {"CoFaxNo", kText, kOwn, &Options::CoFaxNo},
    {"CompanyID", kText, kOwn, &Options::CompanyID},
    {"Reminder3Name", kText, kOwn, &Options::Reminder3Name},
    {"Reminder4Name", kText, kOwn, &Options::Reminder4Name},
    {"Reminder5Name", kText, kOwn, &Options::Reminder5Name},
    {"Reminder6Name", kText, kOwn, &Options::Reminder6Name},
    {"DocPrefix", kText, kOwn, &Options::DocPrefix},
    {"MMPrefix", kText, kOwn, &Options::MMPrefix},
    {"MOT_Reminder_Name", kText, kOwn, &Options::MOT_Reminder_Name, kTestReminderName},
    {"Accounts_Export", kBoolean, kOwn, &Options::Accounts_Export, kNotVehicleSales},
    {"DetailedReport", kBoolean, kOwn, &Options::DetailedReport, kNone, true},
    {"PrintMechanic", kBoolean, kOwn, &Options::PrintMechanic, kNone, true},
    {"RemindersFont", kText, kOwn, &Options::RemindersFont, kReportFont, true},
    {"RemindersFontSize", kInteger16, kOwn, &Options::RemindersFontSize, kReportFontSize, true},
    {"GoodsTerms", kText, kOwn, &Options::GoodsTerms, kNone, true},
    {"PaymentMethods", kText, kOwn, &Options::PaymentMethods, kNone, true},
    {"LabourDesc", kText, kOwn, &Options::LabourDesc, kNone, true},
});

}  // namespace

bool OptionKey::IsSecret() const {
  return std::string_view(name).ends_with("Password");
}

std::span<const OptionKey> OptionKeys() {
  return kOptionKeys;
}

QString OptionText(const Options& options, const OptionKey& key) {
  if (const auto* flag = std::get_if<bool Options::*>(&key.member)) {
    return options.**flag ? QStringLiteral("True") : QStringLiteral("False");
  }
  if (const auto* number = std::get_if<int Options::*>(&key.member)) return QString::number(options.**number);
  return options.*std::get<QString Options::*>(key.member);
}

}  // namespace qbx
