#include "marketingctl/campaign_arguments.h"

#include <QFile>
#include <algorithm>

#include "marketingctl/date_argument.h"
#include "marketingctl/text_argument.h"
#include "queries/filter_table.h"
#include "queries/query_catalogue.h"
#include "util/text.h"
#include "util/typed_number.h"
#include "util/windows1252.h"
#include "wizard/campaign_settings.h"

namespace qbx::ctl {

namespace {

constexpr char kFrom[] = "--from";
constexpr char kTo[] = "--to";

[[noreturn]] void Wrong(const char* flag, const QString& what) {
  throw CLI::ValidationError(std::string(flag) + ": " + what.toStdString());
}

/// Divides "word:rest" at the first colon.
std::pair<QString, QString> Condition(const std::string& argument) {
  const QString text = QString::fromStdString(argument);
  const qsizetype colon = text.indexOf(QLatin1Char(':'));
  return colon < 0 ? std::pair(text.toLower(), QString()) : std::pair(text.left(colon).toLower(), text.mid(colon + 1));
}

/// The forms that the flag of a filter takes: "is:TEXT, is-not:TEXT or none".
QString Forms(const FilterRow& row) {
  if (row.value == FilterValue::kNone) return QStringLiteral("on or off");
  QStringList forms;
  if (row.conditions.empty()) forms << QStringLiteral("TEXT");
  for (const FilterCondition& condition : row.conditions) {
    const QLatin1String value = row.value == FilterValue::kList ? QLatin1String(":TEXT")
                                : condition.twoValues           ? QLatin1String(":N,M")
                                                                : QLatin1String(":N");
    forms << QLatin1String(condition.word) + value;
  }
  return forms.join(QStringLiteral(", ")) + QStringLiteral(" or none");
}

/// \return false when the text is no value of the condition
bool ApplyNumbers(const FilterRow& row, bool twoValues, const QString& text, CampaignRecord& record) {
  const QStringList numbers = twoValues ? text.split(QLatin1Char(',')) : QStringList(text);
  if (twoValues && numbers.size() != 2) return false;
  for (const QString& number : numbers) {
    if (!IsTypedNumber(number)) return false;
  }
  record.*row.values[0] = JoinDigitGroups(numbers.first().trimmed());
  record.*row.values[1] = twoValues ? JoinDigitGroups(numbers.last().trimmed()) : QString();
  return true;
}

void ApplyCondition(const FilterRow& row, const QString& word, const QString& rest, CampaignRecord& record) {
  const auto condition = std::ranges::find_if(
      row.conditions, [&word](const FilterCondition& known) { return word == QLatin1String(known.word); });
  if (condition == row.conditions.end()) Wrong(row.flag, Forms(row));
  const bool fromList = row.value == FilterValue::kList;
  const bool valid = fromList ? !rest.isEmpty() : ApplyNumbers(row, condition->twoValues, rest, record);
  if (!valid) Wrong(row.flag, Forms(row));
  if (fromList) record.*row.values[0] = TextArgument(rest.toStdString());
  record.*row.when = static_cast<int>(condition - row.conditions.begin());
}

void ApplyFilter(const FilterRow& row, const std::string& argument, CampaignRecord& record) {
  if (row.value == FilterValue::kNone) {
    record.*row.use = argument == "on";
    return;
  }
  const auto [word, rest] = Condition(argument);
  record.*row.use = word != QStringLiteral("none");
  if (!(record.*row.use)) return;
  if (row.conditions.empty())
    record.*row.values[0] = TextArgument(argument);
  else
    ApplyCondition(row, word, rest, record);
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
  for (const FilterRow& row : FilterRows()) {
    if (arguments.filters[row.index]) ApplyFilter(row, *arguments.filters[row.index], record);
  }
}

void DeclareFilters(CLI::App& command, CampaignArguments& arguments) {
  for (const FilterRow& row : FilterRows()) {
    if (!row.IsStored()) continue;
    const QString help = QLatin1String(row.help) + QLatin1String(": ") + Forms(row);
    CLI::Option* const option = command.add_option(row.flag, arguments.filters[row.index], help.toStdString());
    if (row.value == FilterValue::kNone) option->check(CLI::IsMember({"on", "off"}));
  }
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
  DeclareFilters(command, arguments);
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
