// The starting queries of step 1: their tree, their numbers, their descriptions and their lists.

#include "queries/query_catalogue.h"

#include <algorithm>
#include <array>

#include "settings/options.h"
#include "util/text.h"

namespace qbx {

namespace {

constexpr int kMostTypedMakes = 50;

struct Description {
  const char* queryKey;
  const char* text;
  const char* example;  ///< left out in the boat edition, where it does not fit
};

constexpr std::array kDescriptions = {
    Description{"CUSTOMER QUERY", "Customer Specific Queries", ""},
    Description{"ALL CUSTOMERS", "All customers in the system.", ""},
    Description{"TOP CUSTOMERS",
                "Top Customers based on Turnover for a specified period. e.g Top customers for the past 12 months, or "
                "Top customers of all time.",
                ""},
    Description{"BOTTOM CUSTOMERS",
                "Least spending Customers based on Turnover for a specified period. e.g Least spending customers for "
                "the past 12 months, or Least spending customers of all time.",
                ""},
    Description{"RECENT CUSTOMERS",
                "Recent Customers i.e Customers who have been invoiced recently. e.g All customers who have been in "
                "in the last 12 months.",
                ""},
    Description{"LAPSED CUSTOMERS",
                "Lapsed Customers i.e Customers where no invoices have been generated for a certain amount of time. "
                "e.g Customer who have not been in for at least 12 months, excluding any who have not been in for 2 "
                "years or more.",
                ""},
    Description{"VEHICLE QUERY", "Vehicle Specific Queries", ""},
    Description{"ALL VEHICLES", "All vehicles in the system (which have an associated customer).", ""},
    Description{"SPECIFIC MAKES", "All vehicles which are of a specific Make.",
                "e.g All vehicles which are an Audi or BMW."},
    Description{"REMINDER DATE", "All vehicles with a specific Recall Date.",
                "e.g All Vehicles with an MOT Due date in December {year}."},
    Description{"SPECIFIC ENGINES", "All engines which are of a specific Make.", ""},
};

QString BoatWording(QString text) {
  return text.replace(QLatin1String("vehicle"), QLatin1String("boat"))
      .replace(QLatin1String("Vehicle"), QLatin1String("Boat"));
}

}  // namespace

bool IsGroupNode(int query) {
  return query == kCustomerGroup || query == kVehicleGroup;
}

bool IsCustomerQuery(int query) {
  return query > kCustomerGroup && query < kVehicleGroup;
}

std::vector<QueryNode> QueryTree(bool boatEdition) {
  std::vector<QueryNode> nodes = {
      {kCustomerGroup, 0, QStringLiteral("Customer Query"), QStringLiteral("Customer specific Queries")},
      {kAllCustomers, kCustomerGroup, QStringLiteral("All Customers"), QStringLiteral("All Customers")},
      {kLapsedCustomers, kCustomerGroup, QStringLiteral("Lapsed Customers"), QStringLiteral("Lapsed Customers")},
      {kRecentCustomers, kCustomerGroup, QStringLiteral("Recent Customers"), QStringLiteral("Recent Customers")},
      {kTopCustomers, kCustomerGroup, QStringLiteral("Top Customers"), QStringLiteral("Top Customers")},
      {kBottomCustomers, kCustomerGroup, QStringLiteral("Bottom Customers"), QStringLiteral("Bottom Customers")},
      {kVehicleGroup, 0, QStringLiteral("Vehicle Query"), QStringLiteral("Vehicle Specific Queries")},
      {kAllVehicles, kVehicleGroup, QStringLiteral("All Vehicles"), QStringLiteral("All Vehicles")},
      {kSpecificMakes, kVehicleGroup, QStringLiteral("Specific Makes"), QStringLiteral("Specific Makes")},
      {kReminderDate, kVehicleGroup, QStringLiteral("Reminder Date"), QStringLiteral("Based on Reminder Date")},
  };
  if (boatEdition) {
    for (QueryNode& node : nodes)
      node.text = BoatWording(node.text);
    nodes.push_back(
        {kSpecificEngines, kVehicleGroup, QStringLiteral("Specific Engines"), QStringLiteral("Specific Engines")});
  }
  return nodes;
}

std::optional<QueryNode> FindQueryNode(int index, bool boatEdition) {
  const std::vector<QueryNode> nodes = QueryTree(boatEdition);
  if (index < 1 || static_cast<size_t>(index) > nodes.size()) return std::nullopt;
  return nodes[static_cast<size_t>(index) - 1];
}

QString QueryDescription(const QString& queryKey, bool boatEdition, int year) {
  const auto found = std::find_if(kDescriptions.begin(), kDescriptions.end(), [&](const Description& description) {
    return queryKey == QLatin1String(description.queryKey);
  });
  if (found == kDescriptions.end()) return {};
  QString text = QString::fromLatin1(found->text);
  if (boatEdition) return BoatWording(text);
  const QString example = QString::fromLatin1(found->example);
  if (example.isEmpty()) return text;
  return text + u' ' + QString(example).replace(QLatin1String("{year}"), QString::number(year));
}

std::optional<QString> MakesListStatement(const QString& queryKey) {
  if (queryKey == QLatin1String("SPECIFIC MAKES")) return QStringLiteral("proc_sel_Makes_all (0)");
  if (queryKey == QLatin1String("SPECIFIC ENGINES")) return QStringLiteral("proc_sel_Makes_all (5)");
  return std::nullopt;
}

QStringList ReminderList(const Options& options) {
  return {options.MOT_Reminder_Name + QLatin1String(" Reminder"), QStringLiteral("Service Reminder"),
          QLatin1String("Recall 3: ") + options.Reminder3Name,    QLatin1String("Recall 4: ") + options.Reminder4Name,
          QLatin1String("Recall 5: ") + options.Reminder5Name,    QLatin1String("Recall 6: ") + options.Reminder6Name};
}

QStringList CampaignTypes() {
  return {QStringLiteral("Reminders"), QStringLiteral("Advice Notices"), QStringLiteral("Promotions"),
          QStringLiteral("Other")};
}

std::vector<bool> MakesInText(const QString& text, const QStringList& items) {
  QStringList entries;
  for (const QString& piece : text.split(u','))
    entries += TrimBlanks(piece);
  std::vector<bool> named;
  for (const QString& item : items)
    named.push_back(entries.contains(item, Qt::CaseInsensitive));
  return named;
}

QString RebuildMakesText(const QString& current, const QStringList& items, const QStringList& selected) {
  QStringList entries = selected;
  int typed = 0;
  for (const QString& piece : current.split(u',')) {
    const QString entry = TrimBlanks(piece);
    if (entry.isEmpty() || items.contains(entry, Qt::CaseInsensitive)) continue;
    if (++typed > kMostTypedMakes) break;
    entries.append(entry);
  }
  return entries.join(QLatin1String(", "));
}

}  // namespace qbx
