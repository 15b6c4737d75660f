// marketingctl help: the help of a command, and the topics fields, queries and errors.

#include <algorithm>
#include <cstdio>
#include <memory>

#include "marketingctl/closest_name.h"
#include "marketingctl/commands.h"
#include "marketingctl/output.h"
#include "merge/template_fields.h"
#include "queries/query_catalogue.h"

namespace qbx::ctl {

namespace {

/// The rows of a topic, with their columns in order.
struct TopicTable {
  QStringList columns;
  QJsonArray rows;
};

TopicTable Fields() {
  QJsonArray rows;
  for (const FieldMeaning& field : FieldMeanings(QDate::currentDate(), false)) {
    rows.append(QJsonObject{{QStringLiteral("field"), field.field},
                            {QStringLiteral("example"), field.example},
                            {QStringLiteral("meaning"), field.meaning}});
  }
  return {{QStringLiteral("field"), QStringLiteral("example"), QStringLiteral("meaning")}, rows};
}

TopicTable Queries() {
  const int year = QDate::currentDate().year();
  QJsonArray rows;
  for (const bool boat : {false, true}) {
    for (const QueryNode& node : QueryTree(boat)) {
      if (node.parent == 0 || (boat && FindQueryNode(node.index, false))) continue;
      const QString edition = boat ? QStringLiteral("Boat edition: ") : QString();
      rows.append(QJsonObject{{QStringLiteral("query"), node.key},
                              {QStringLiteral("selects"), edition + QueryDescription(node.QueryKey(), boat, year)}});
    }
  }
  return {{QStringLiteral("query"), QStringLiteral("selects")}, rows};
}

TopicTable Errors() {
  QJsonArray rows;
  for (const ErrorCode& code : ErrorCodes()) {
    rows.append(QJsonObject{{QStringLiteral("code"), QLatin1String(code.code)},
                            {QStringLiteral("meaning"), QString::fromLatin1(code.meaning)}});
  }
  return {{QStringLiteral("code"), QStringLiteral("meaning")}, rows};
}

struct Topic {
  const char* name;
  const char* about;
  TopicTable (*table)();
};

constexpr Topic kTopics[] = {{"fields", "Merge fields of texts, e-mails and letters", Fields},
                             {"queries", "Starting queries, for --query", Queries},
                             {"errors", "Codes of \"error\" in the JSON", Errors}};

/// A person reads a topic for its texts, so none is cut.
void Print(const Topic& topic, bool json) {
  const TopicTable table = topic.table();
  if (json) return PrintJson(table.rows);
  constexpr int kBlanksBetween = 2;
  std::vector<qsizetype> widths;
  for (const QString& column : table.columns) {
    qsizetype width = 0;
    for (const QJsonValue row : table.rows)
      width = std::max(width, row[column].toString().size());
    widths.push_back(width + kBlanksBetween);
  }
  for (const QJsonValue row : table.rows) {
    QString line;
    for (qsizetype i = 0; i < table.columns.size(); ++i)
      line += row[table.columns[i]].toString().leftJustified(widths[static_cast<size_t>(i)]);
    PrintLine(line.trimmed());
  }
}

/// \throws CLI::ValidationError for a word that is neither a topic nor a command
std::string HelpOf(CLI::App& root, const std::vector<std::string>& words) {
  CLI::App* command = &root;
  std::string before;
  for (const std::string& word : words) {
    QStringList names = CommandNames(*command);
    if (!names.contains(QString::fromStdString(word))) {
      for (const Topic& topic : kTopics)
        names << QLatin1String(topic.name);
      throw CLI::ValidationError("There is no help for \"" + word + "\"." +
                                 DidYouMean(QString::fromStdString(word), names).toStdString());
    }
    before += command->get_name() + " ";
    command = command->get_subcommand(word);
  }
  return command->help(before);
}

int Help(Runner& runner, const std::vector<std::string>& words) {
  for (const Topic& topic : kTopics) {
    if (words.size() != 1 || words.front() != topic.name) continue;
    Print(topic, runner.Flags().json);
    return kDone;
  }
  std::printf("%s", HelpOf(runner.Root(), words).c_str());
  return kDone;
}

}  // namespace

void AddHelpCommand(Runner& runner) {
  auto words = std::make_shared<std::vector<std::string>>();
  CLI::App& command = *runner.Root().add_subcommand("help", "Explain a command, or: fields, queries, errors");
  command.add_option("TOPIC", *words, "A command (\"campaigns new\"), or one of these:")->type_name("");
  std::string footer;
  for (const Topic& topic : kTopics)
    footer +=
        std::string("  ") + topic.name + std::string(10 - std::string(topic.name).size(), ' ') + topic.about + "\n";
  command.footer(footer + "Example: marketingctl help fields");
  runner.AddBareCommand(command, [words, &runner] { return Help(runner, *words); });
}

}  // namespace qbx::ctl
