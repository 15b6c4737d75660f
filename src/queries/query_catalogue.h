// The starting queries of step 1 as they are shown: their tree, their descriptions and their lists.

#pragma once

#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

#include "queries/starting_queries.h"

namespace qbx {

struct Options;

/// Whether the node only groups others.
[[nodiscard]] bool IsGroupNode(int query);

/// A node of `tvQuery`.
struct QueryNode {
  int index;    ///< the query number
  int parent;   ///< 0: a root, shown expanded
  QString key;  ///< the same in every edition
  QString text;
  RowsOf rows;

  /// The key as the routines below take it: in upper case.
  [[nodiscard]] QString QueryKey() const { return key.toUpper(); }
};

/// All nodes in the order in which they are added. "Specific Engines" exists in the boat edition only.
[[nodiscard]] std::vector<QueryNode> QueryTree(bool boatEdition);
/// \return nothing when the tree of this edition has no such node
[[nodiscard]] std::optional<QueryNode> FindQueryNode(int index, bool boatEdition);

/// The text of `txtQueryDesc`; empty for an unknown key.
/// \param year  the current year, named in the description of the reminder query
[[nodiscard]] QString QueryDescription(const QString& queryKey, bool boatEdition, int year);

inline constexpr int kReminders = 6;  ///< entries of `cmbReminder`
/// The entries of `cmbReminder`; the recall number of an entry is its position plus one.
[[nodiscard]] QStringList ReminderList(const Options& options);
/// The entries of `cmbType`.
[[nodiscard]] QStringList CampaignTypes();

/// The items of a makes list that a makes text names, without regard to case: as long as the list.
[[nodiscard]] std::vector<bool> MakesInText(const QString& text, const QStringList& items);

/// The text of `txtMakes` after a click in `lstMakes`: the selected items in list order, then the typed entries that
/// are no items, separated by ", ". The first 50 typed entries are kept, any more are dropped.
/// \param current   the text before the click
/// \param items     every item of the list
/// \param selected  the selected ones, in list order
[[nodiscard]] QString RebuildMakesText(const QString& current, const QStringList& items, const QStringList& selected);

}  // namespace qbx
