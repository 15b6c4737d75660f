// Personalising a template: the merge fields and the replacing.

#pragma once

#include <QDate>
#include <QString>

namespace qbx {

/// What a customer's merge fields are filled with. Empty text for NULL; dates as "dd/mm/yyyy" (see `MergeDate`).
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
/// "{lastname}", "{duetime}" and "{currentdate}" of a template, in this order, whatever their letter case. In rich text
/// (a template that holds "{\rtf") the field is written "\{contact\}". Values go in unchanged, and a later field that a
/// value holds is merged in its turn. Anything else in braces stays as it is.
/// \param today  what "{currentdate}" shows, as "dd/mm/yyyy"
/// \return the merged text
[[nodiscard]] QString MergeFields(const QString& text, const QString& title, const QString& firstname,
                                  const QString& lastname, const QString& contact, const QString& make,
                                  const QString& model, const QString& regno, const QString& duedate,
                                  const QString& duetime, QDate today);
[[nodiscard]] QString MergeFields(const QString& text, const MergeValues& values, QDate today);

/// Replaces every occurrence of `find` (not empty) in `text` itself, ignoring letter case; the search goes on behind
/// what was inserted. Case is folded code unit by code unit, so that lengths never change; the locale plays no part.
/// \return `text`
const QString& ReplaceNoCase(QString& text, const QString& find, const QString& replacement);

/// A date as merged texts show it: "dd/mm/yyyy", empty for an invalid date.
[[nodiscard]] QString MergeDate(QDate date);

/// Whether a template is rich text.
[[nodiscard]] bool IsRichText(const QString& text);

}  // namespace qbx
