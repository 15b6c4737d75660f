#include <string>

#include "hostdb/sample_settings.h"
#include "sqlite/sqlite_file.h"

namespace qbx {

namespace {

/// A saved campaign: the values in which those of the sample differ.
struct Campaign {
  std::string_view name;
  std::string_view description;
  qint64 query;  ///< the number of its query
  QDate date1;
  QDate date2;
  std::string_view letter;  ///< the lines between greeting and closing, in RTF
  std::string_view subject;
  std::string_view email;  ///< the same as plain text
  std::string_view sms;
  std::string_view makes = {};
  qint64 records = 100;
  qint64 reminder = -1;
  std::string_view mileageAbove = {};
};

constexpr std::string_view kLetterStart =
    "{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl{\\f0\\fswiss\\fcharset0 Tahoma;}}\r\n{\\colortbl ;\\red0\\green64\\blue128;}\r\n\\viewkind4\\uc1\\pard\\qr\\f0\\fs20 \\{currentdate\\}\\par\r\n\\pard\\par\r\nDear \\{contact\\},\\par\r\n\\par\r\n";
constexpr std::string_view kLetterEnd =
    "\\par\r\n\\par\r\nPlease call us on \\b 01632 960100\\b0  and we will find a time that suits you.\\par\r\n\\par\r\nYours sincerely,\\par\r\n\\par\r\n\\cf1\\b Hartley Motors\\cf0\\b0\\par\r\nUnit 4, Mill Lane, Milbury\\par\r\n}\r\n";
constexpr std::string_view kEmailStart = "Dear {contact},\r\n\r\n";
constexpr std::string_view kEmailEnd =
    "\r\n\r\nCall us on 01632 960100 or answer this message.\r\n\r\nHartley Motors\r\nUnit 4, Mill Lane, Milbury\r\nIf you would rather not hear from us, tell us and we will stop.\r\n";

std::string Framed(std::string_view start, std::string_view middle, std::string_view end) {
  return std::string(start).append(middle).append(end);
}

void Save(sqlite3* database, const Campaign& campaign, QDate created) {
  const std::string createdDate = created.toString(QStringLiteral("yyyy-MM-dd 09:00:00.000")).toStdString();
  const auto day = [](QDate date) { return date.toString(Qt::ISODate).toStdString(); };
  SqliteStatement save(database, R"sql(
    INSERT INTO Marketing_Campaigns (Campaign_Name, Campaign_Description, CampaignTypeID, Date1, Date2, Letter, Email_Subject, Email_Body,
      SMS, Makes, Records, ReminderID, UseLastKnownMileage, WhenLastKnownMileage, ValueLastKnownMileage1, Created_Date,
      Version, Step1, Step2, Step3, RecordsStart, Marketing, UseCustType, UseEnquirySource, UseYearOfManufacture, WhenCustType,
      WhenEnquirySource, WhenYearOfManufacture, ValueCustType, ValueEnquirySource, ValueLastKnownMileage2, ValueYearOfManufacture1,
      ValueYearOfManufacture2, Created_By)
    VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?,
      1, 0, 0, 0, 1, 0, 0, 0, 0, -1, -1, -1, '', '', '', '', '', 'manager'))sql");
  save.Add(campaign.name)
      .Add(campaign.description)
      .Add(campaign.query)
      .Add(day(campaign.date1))
      .Add(day(campaign.date2));
  save.Add(Framed(kLetterStart, campaign.letter, kLetterEnd)).Add(campaign.subject);
  save.Add(Framed(kEmailStart, campaign.email, kEmailEnd)).Add(campaign.sms).Add(campaign.makes);
  save.Add(campaign.records).Add(campaign.reminder).Add(qint64{campaign.mileageAbove.empty() ? 0 : 1});
  save.Add(qint64{campaign.mileageAbove.empty() ? -1 : 0}).Add(campaign.mileageAbove).Add(createdDate).Run();
  SqliteStatement(
      database,
      "INSERT INTO Marketing_Campaigns_History (Record_Date, CampaignID, Campaign_Name, Event, UserID) VALUES (?, last_insert_rowid(), ?, 'Campaign added', 'manager')")
      .Add(createdDate)
      .Add(campaign.name)
      .Run();
}

Campaign LapsedCustomers(QDate asOf) {
  return {
      .name = "Lapsed customers",
      .description = "Customers whose last invoice is more than two years old.",
      .query = 3,
      .date1 = asOf.addMonths(-24),
      .date2 = asOf,
      .letter =
          "It has been a while since we last saw you, and we would like to welcome you back.\\par\r\n\\par\r\nBring this letter with you and we will take \\b 10% off\\b0  your next service, and check your tyres, lights and fluids free of charge.",
      .subject = "We would like to see you again, {contact}",
      .email =
          "It has been a while since we last saw you. Come back this month and we will take 10% off your next service, and check your tyres, lights and fluids free of charge.",
      .sms =
          "Dear {contact}, we have not seen you for a while. 10% off your next service this month at Hartley Motors: 01632 960100. Text STOP to opt out."};
}

Campaign MotDue(QDate asOf) {
  return {
      .name = "MOT due",
      .description = "Vehicles whose MOT is due within the next two months.",
      .query = 10,
      .date1 = asOf,
      .date2 = asOf.addMonths(2),
      .letter =
          "According to our records the MOT of your \\b \\{make\\} \\{model\\}\\b0 , registration \\b \\{regno\\}\\b0 , is due on \\b \\{duedate\\}\\b0 .\\par\r\n\\par\r\nAn MOT takes about an hour, and you may wait in our lounge.",
      .subject = "The MOT of your {make} {model} ({regno}) is due",
      .email =
          "According to our records the MOT of your {make} {model}, registration {regno}, is due on {duedate}. An MOT takes about an hour, and you may wait in our lounge.",
      .sms =
          "Dear {contact}, the MOT of your {make} {regno} is due on {duedate}. Call Hartley Motors on 01632 960100 to book. Text STOP to opt out.",
      .reminder = 0};
}

Campaign ServiceOffer(QDate asOf) {
  return {
      .name = "Recent visitors: winter check",
      .description = "Everybody who was invoiced within the last three months.",
      .query = 4,
      .date1 = asOf.addMonths(-3),
      .date2 = asOf,
      .letter =
          "Thank you for coming to us. For a limited period we offer a free winter check of battery, lights and tyres.",
      .subject = "A free winter check for you",
      .email =
          "Thank you for coming to us. For a limited period we offer a free winter check of battery, lights and tyres.",
      .sms =
          "Dear {contact}, thank you for your visit. Free winter check this month: call Hartley Motors on 01632 960100. Text STOP to opt out."};
}

Campaign BestCustomers(QDate asOf) {
  return {
      .name = "Top 25 of the year",
      .description = "The 25 customers who spent most within twelve months.",
      .query = 5,
      .date1 = asOf.addMonths(-12),
      .date2 = asOf,
      .letter =
          "You are one of our best customers. As a thank-you we would like to valet your car free of charge at your next visit.",
      .subject = "A thank-you from Hartley Motors",
      .email =
          "You are one of our best customers. As a thank-you we would like to valet your car free of charge at your next visit.",
      .sms =
          "Dear {contact}, as a thank-you we will valet your car free at your next visit. Hartley Motors, 01632 960100. Text STOP to opt out.",
      .records = 25};
}

Campaign GermanMakes(QDate asOf) {
  return {
      .name = "Audi, BMW and Volkswagen",
      .description = "Vehicles of three makes, for the specialist's day.",
      .query = 9,
      .date1 = asOf.addMonths(-12),
      .date2 = asOf,
      .letter =
          "Our specialist for \\{make\\} is here for a day. May we look at your \\{model\\}, registration \\{regno\\}?",
      .subject = "A day for your {make}",
      .email = "Our specialist for {make} is here for a day. May we look at your {model}, registration {regno}?",
      .sms =
          "Dear {contact}, our {make} specialist is here for a day. Call Hartley Motors on 01632 960100. Text STOP to opt out.",
      .makes = "Audi, BMW, Volkswagen"};
}

Campaign HighMileage(QDate asOf) {
  return {
      .name = "Cambelt: above 80,000 miles",
      .description = "All vehicles with a last known mileage above 80,000.",
      .query = 8,
      .date1 = asOf.addMonths(-12),
      .date2 = asOf,
      .letter =
          "According to our records your \\{make\\} \\{model\\} with registration \\{regno\\} may be due for a cambelt replacement.",
      .subject = "Is the cambelt of your {make} due?",
      .email =
          "According to our records your {make} {model} with registration {regno} may be due for a cambelt replacement.",
      .sms =
          "Dear {contact}, the cambelt of your {make} {regno} may be due. Call Hartley Motors on 01632 960100. Text STOP to opt out.",
      .mileageAbove = "80000"};
}

}  // namespace

void FillSampleCampaigns(sqlite3* database, QDate asOf) {
  int daysAgo = 60;
  for (const auto make : {LapsedCustomers, MotDue, ServiceOffer, BestCustomers, GermanMakes, HighMileage})
    Save(database, make(asOf), asOf.addDays(-(daysAgo -= 7)));
}

}  // namespace qbx
