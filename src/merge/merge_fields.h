// Merging a template: the merge fields and their replacement.

#pragma once

#include <QDate>
#include <QString>

namespace qbx {

/// The values of the merge fields for one customer. A NULL is an empty text; a date is written by `MergeDate`.
struct MergeValues {
  QString title = {};
  QString firstname = {};
  QString lastname = {};
  QString contact = {};
  QString make = {};
  QString model = {};
  QString regno = {};
  QString duedate = {};
  QString duetime = {};
};

/// Replaces the fields "{contact}", "{make}", "{model}", "{regno}", "{duedate}", "{title}", "{firstname}",
/// "{lastname}", "{duetime}" and "{currentdate}" of a template, in this order, ignoring case. In rich text (a template
/// that holds "{\rtf") a field is written "\{contact\}". Values are inserted unchanged; a field inside an inserted
/// value is replaced too if it comes later in the order. Any other text in braces stays as it is.
/// \param today  what "{currentdate}" shows, as "dd/mm/yyyy"
/// \return the merged text
[[nodiscard]] QString MergeFields(const QString& text, const QString& title, const QString& firstname,
                                  const QString& lastname, const QString& contact, const QString& make,
                                  const QString& model, const QString& regno, const QString& duedate,
                                  const QString& duetime, QDate today);
[[nodiscard]] QString MergeFields(const QString& text, const MergeValues& values, QDate today);

/// Replaces every occurrence of `find` (not empty) in `text` itself, ignoring case. The search goes on after the
/// inserted text. Case is folded one code unit at a time, so lengths never change and the locale does not matter.
/// \return `text`
const QString& ReplaceNoCase(QString& text, const QString& find, const QString& replacement);

/// A date as merged texts show it: "dd/mm/yyyy", empty for an invalid date.
[[nodiscard]] QString MergeDate(QDate date);

/// Whether a template is rich text.
[[nodiscard]] bool IsRichText(const QString& text);

}  // namespace qbx
