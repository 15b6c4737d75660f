#include "marketingctl/campaign_arguments.h"

#include <QFile>

#include "marketingctl/date_argument.h"
#include "marketingctl/text_argument.h"
#include "queries/query_catalogue.h"
#include "util/text.h"
#include "util/windows1252.h"
#include "wizard/campaign_settings.h"

namespace qbx::ctl {

namespace {

constexpr char kFrom[] = "--from";
constexpr char kTo[] = "--to";

[[noreturn]] void Wrong(const char* flag, const QString& what) {
  throw CLI::ValidationError(std::string(flag) + ": " + what.toStdString());
}

/// "word:rest" taken apart at the first colon.
std::pair<QString, QString> Condition(const std::string& argument) {
  const QString text = QString::fromStdString(argument);
  const qsizetype colon = text.indexOf(QLatin1Char(':'));
  return colon < 0 ? std::pair(text.toLower(), QString()) : std::pair(text.left(colon).toLower(), text.mid(colon + 1));
}

void ApplyTextFilter(const char* flag, const std::string& argument, bool& use, int& when, QString& value) {
  const auto [word, rest] = Condition(argument);
  use = word != QStringLiteral("none");
  if (!use) return;
  const int position = static_cast<int>(QStringList{QStringLiteral("is"), QStringLiteral("is-not")}.indexOf(word));
  if (position < 0 || rest.isEmpty()) Wrong(flag, QStringLiteral("is:TEXT, is-not:TEXT or none"));
  when = position;
  value = TextArgument(rest.toStdString());
}

void ApplyNumberFilter(const char* flag, const std::string& argument, const QStringList& words, bool& use, int& when,
                       QString& first, QString& second) {
  const auto [word, rest] = Condition(argument);
  use = word != QStringLiteral("none");
  if (!use) return;
  const int position = static_cast<int>(words.indexOf(word));
  const QStringList numbers = rest.split(QLatin1Char(','));
  const bool between = word == QStringLiteral("between");
  bool valid = position >= 0 && numbers.size() == (between ? 2 : 1);
  for (const QString& number : numbers) {
    bool isNumber = false;
    (void)number.trimmed().toDouble(&isNumber);
    valid = valid && isNumber;
  }
  if (!valid) {
    QStringList forms;
    for (const QString& known : words) {
      forms << known + (known == QStringLiteral("between") ? QStringLiteral(":N,M") : QStringLiteral(":N"));
    }
    Wrong(flag, forms.join(QStringLiteral(", ")) + QStringLiteral(" or none"));
  }
  when = position;
  first = numbers.first().trimmed();
  second = between ? numbers.last().trimmed() : QString();
}

int QueryNumber(const std::string& argument, const EditionFlags& edition) {
  const QString wanted = QString::fromStdString(argument);
  QStringList names;
  for (const QueryNode& node : QueryTree(edition.boat)) {
    if (node.parent == 0) continue;
    if (EqualsNoCase(node.key, wanted) || EqualsNoCase(node.text, wanted)) return node.index;
    names << node.key;
  }
  Wrong("--query", QLatin1Char('"') + wanted + QStringLiteral("\" is not one of: ") + names.join(QStringLiteral(", ")));
}

QString Letter(const std::string& path) {
  QFile file(QString::fromStdString(path));
  if (!file.open(QIODevice::ReadOnly))
    Wrong("--letter", QStringLiteral("the file cannot be read: ") + file.errorString());
  const QByteArray bytes = file.readAll();
  if (!bytes.trimmed().startsWith("{\\rtf")) Wrong("--letter", QStringLiteral("the file is not rich text (RTF)"));
  return FromFileBytes(bytes);
}

void ApplyFilters(const CampaignArguments& arguments, CampaignRecord& record) {
  if (arguments.custType) {
    ApplyTextFilter("--cust-type", *arguments.custType, record.UseCustType, record.WhenCustType, record.ValueCustType);
  }
  if (arguments.source) {
    ApplyTextFilter("--source", *arguments.source, record.UseEnquirySource, record.WhenEnquirySource,
                    record.ValueEnquirySource);
  }
  if (arguments.mileage) {
    ApplyNumberFilter("--mileage", *arguments.mileage,
                      {QStringLiteral("higher"), QStringLiteral("less"), QStringLiteral("between")},
                      record.UseLastKnownMileage, record.WhenLastKnownMileage, record.ValueLastKnownMileage1,
                      record.ValueLastKnownMileage2);
  }
  if (arguments.year) {
    ApplyNumberFilter(
        "--year", *arguments.year,
        {QStringLiteral("is"), QStringLiteral("after"), QStringLiteral("before"), QStringLiteral("between")},
        record.UseYearOfManufacture, record.WhenYearOfManufacture, record.ValueYearOfManufacture1,
        record.ValueYearOfManufacture2);
  }
  if (arguments.noMarketing) record.Marketing = *arguments.noMarketing == "on";
}

void ApplyTemplates(const CampaignArguments& arguments, CampaignRecord& record) {
  if (arguments.sms) record.SMS = TextArgument(*arguments.sms);
  if (arguments.subject) record.Email_Subject = TextArgument(*arguments.subject);
  if (arguments.body) record.Email_Body = TextArgument(*arguments.body);
  if (arguments.letter) record.Letter = Letter(*arguments.letter);
  if (arguments.description) record.Campaign_Description = TextArgument(*arguments.description);
}

}  // namespace

void DeclareCampaignArguments(CLI::App& command, CampaignArguments& arguments) {
  command.add_option("--query", arguments.query, "Starting query, such as \"Recent Customers\" or \"Reminder Date\"");
  command
      .add_option(kFrom, arguments.from,
                  "First date of the query's range, such as 2026-01-31, today, -2y or month-start+1m")
      ->type_name("DATE");
  command.add_option(kTo, arguments.to, "Last date of the range, such as 2026-01-31, +14d or month-end+1m")
      ->type_name("DATE");
  command.add_option("--records", arguments.records, "Top and Bottom Customers: how many")
      ->check(CLI::Range(0, 2'000'000'000));
  command.add_option("--start", arguments.start, "Top and Bottom Customers: first place of the ranking")
      ->check(CLI::Range(0, 2'000'000'000));
  command.add_option("--makes", arguments.makes, "Specific Makes: \"Audi, Ford\"");
  command.add_option("--reminder", arguments.reminder, "Reminder Date: recall number")->check(CLI::Range(1, 6));
  command.add_option("--cust-type", arguments.custType, "Customer type filter: is:TEXT, is-not:TEXT or none");
  command.add_option("--source", arguments.source, "Enquiry source filter: is:TEXT, is-not:TEXT or none");
  command.add_option("--mileage", arguments.mileage, "Mileage filter: higher:N, less:N, between:N,M or none");
  command.add_option("--year", arguments.year,
                     "Year of manufacture filter: is:N, after:N, before:N, between:N,M or none");
  command.add_option("--no-marketing", arguments.noMarketing, "Include customers who have selected No Marketing")
      ->check(CLI::IsMember({"on", "off"}));
  command.add_option("--sms", arguments.sms, "Text message with merge fields; @FILE reads it from a file");
  command.add_option("--subject", arguments.subject, "E-mail subject; @FILE as above");
  command.add_option("--body", arguments.body, "E-mail text; @FILE as above");
  command.add_option("--letter", arguments.letter, "Letter, a rich text file")->type_name("FILE.rtf");
  command.add_option("--description", arguments.description, "What the campaign is for");
}

void ApplyCampaignArguments(const CampaignArguments& arguments, const EditionFlags& edition, const QDate& today,
                            CampaignRecord& record) {
  if (arguments.query) record.CampaignTypeID = QueryNumber(*arguments.query, edition);
  if (arguments.from) record.Date1 = DateArgument(kFrom, *arguments.from, today).startOfDay();
  if (arguments.to) record.Date2 = DateArgument(kTo, *arguments.to, today).startOfDay();
  if (arguments.records) record.Records = *arguments.records;
  if (arguments.start) record.RecordsStart = *arguments.start;
  if (arguments.makes) record.Makes = TextArgument(*arguments.makes);
  if (arguments.reminder) record.ReminderID = *arguments.reminder - 1;
  ApplyFilters(arguments, record);
  ApplyTemplates(arguments, record);
}

void CheckStoredDates(const CampaignArguments& arguments, const CampaignRecord& record) {
  const auto check = [](const char* flag, bool given, const QDateTime& date) {
    if (!given || date.date().year() >= kEarliestStoredYear) return;
    Wrong(flag, QStringLiteral("a saved campaign keeps dates from %1 on; \"query\" takes earlier ones for one call")
                    .arg(kEarliestStoredYear));
  };
  check(kFrom, arguments.from.has_value(), record.Date1);
  check(kTo, arguments.to.has_value(), record.Date2);
}

}  // namespace qbx::ctl
