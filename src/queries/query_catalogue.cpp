#include "queries/query_catalogue.h"

#include "settings/options.h"
#include "util/boat_wording.h"
#include "util/text.h"

namespace qbx {

namespace {

constexpr int kMostTypedMakes = 50;

const StartingQuery* FindByKey(const QString& queryKey) {
  for (const StartingQuery& query : StartingQueries()) {
    if (QString::fromLatin1(query.key).toUpper() == queryKey) return &query;
  }
  return nullptr;
}

}  // namespace

bool IsGroupNode(int query) {
  const StartingQuery* const found = FindStartingQuery(query);
  return found != nullptr && found->IsGroup();
}

std::vector<QueryNode> QueryTree(bool boatEdition) {
  std::vector<QueryNode> nodes;
  for (const StartingQuery& query : StartingQueries()) {
    if (query.boatOnly && !boatEdition) continue;
    const QString text = QString::fromLatin1(query.text);
    nodes.push_back({.index = query.number,
                     .parent = query.parent,
                     .key = QString::fromLatin1(query.key),
                     .text = boatEdition ? BoatWording(text) : text,
                     .rows = query.rows});
  }
  return nodes;
}

std::optional<QueryNode> FindQueryNode(int index, bool boatEdition) {
  for (const QueryNode& node : QueryTree(boatEdition)) {
    if (node.index == index) return node;
  }
  return std::nullopt;
}

QString QueryDescription(const QString& queryKey, bool boatEdition, int year) {
  const StartingQuery* const query = FindByKey(queryKey);
  if (query == nullptr) return {};
  QString text = QString::fromLatin1(query->description);
  if (boatEdition) return BoatWording(text);
  const QString example = QString::fromLatin1(query->example);
  if (example.isEmpty()) return text;
  return text + u' ' + QString(example).replace(QLatin1String("{year}"), QString::number(year));
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
