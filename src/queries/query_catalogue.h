// The starting queries as step 1 shows them: their tree, descriptions and lists.

#pragma once

#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

#include "queries/starting_queries.h"

namespace qbx {

struct Options;

/// Whether a node only groups others.
[[nodiscard]] bool IsGroupNode(int query);

/// A node of `tvQuery`.
struct QueryNode {
  int index;    ///< the query number
  int parent;   ///< 0 for a root, which is shown expanded
  QString key;  ///< the same in every edition
  QString text;
  RowsOf rows;

  /// The key in upper case, as the functions below take it.
  [[nodiscard]] QString QueryKey() const { return key.toUpper(); }
};

/// All nodes in the order of the tree. "Specific Engines" exists in the boat edition only.
[[nodiscard]] std::vector<QueryNode> QueryTree(bool boatEdition);
/// \return nothing when the tree of this edition lacks the node
[[nodiscard]] std::optional<QueryNode> FindQueryNode(int index, bool boatEdition);

/// The text of `txtQueryDesc`; empty for an unknown key.
/// \param year  the current year, named in the description of the reminder query
[[nodiscard]] QString QueryDescription(const QString& queryKey, bool boatEdition, int year);

inline constexpr int kReminders = 6;  ///< entries of `cmbReminder`
/// The entries of `cmbReminder`; an entry's recall number is its position plus one.
[[nodiscard]] QStringList ReminderList(const Options& options);
/// The entries of `cmbType`.
[[nodiscard]] QStringList CampaignTypes();

/// For each item of a makes list, whether a text names it (ignoring case).
[[nodiscard]] std::vector<bool> MakesInText(const QString& text, const QStringList& items);

/// The text of `txtMakes` after a click in `lstMakes`: the selected items in list order, then the typed entries that
/// are not in the list, separated by ", ". At most 50 typed entries are kept.
/// \param current   the text before the click
/// \param items     every item of the list
/// \param selected  the selected ones, in list order
[[nodiscard]] QString RebuildMakesText(const QString& current, const QStringList& items, const QStringList& selected);

}  // namespace qbx
