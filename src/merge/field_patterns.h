// What the two ways of merging share: the fields in their order, and comparing without case. For use in this folder
// only.

#pragma once

#include <QString>
#include <array>

#include "merge/merge_fields.h"

namespace qbx {

/// Where the value of a field comes from.
enum class FieldSource { kCustomer, kVehicle, kDueDate, kNowhere };

/// The merge fields in the order in which they are replaced.
struct MergeField {
  const char16_t* word;
  QString MergeValues::*value;  ///< null for today's date
  const char* meaning;          ///< what the field stands for in a campaign, as shown to the user
  FieldSource source = FieldSource::kCustomer;
};
inline constexpr std::array<MergeField, 10> kMergeFields{{
    {u"contact", &MergeValues::contact, "how the customer is addressed; \"Customer\" where nothing is known"},
    {u"make", &MergeValues::make, "make of the vehicle, in a campaign of vehicles", FieldSource::kVehicle},
    {u"model", &MergeValues::model, "model of the vehicle", FieldSource::kVehicle},
    {u"regno", &MergeValues::regno, "registration number of the vehicle", FieldSource::kVehicle},
    {u"duedate", &MergeValues::duedate, "due date of the reminder, as dd/mm/yyyy", FieldSource::kDueDate},
    {u"title", &MergeValues::title, "title of the customer"},
    {u"firstname", &MergeValues::firstname, "first name"},
    {u"lastname", &MergeValues::lastname, "last name"},
    {u"duetime", &MergeValues::duetime, "always empty: the host keeps no time", FieldSource::kNowhere},
    {u"currentdate", nullptr, "the day on which it is sent, as dd/mm/yyyy"},
}};

/// A field as a template holds it, with its braces, in lower case.
[[nodiscard]] QString FieldPattern(const MergeField& field, bool richText);

/// One code unit in lower case. A letter whose lower case has another length stays as it is.
[[nodiscard]] inline char16_t FoldCase(char16_t unit) {
  if (unit < 0x80) return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + 32) : unit;
  return static_cast<char16_t>(QChar::toLower(char32_t{unit}));
}

/// Whether `text` holds `folded` (a text in lower case) at `position`, ignoring case.
[[nodiscard]] bool MatchesAt(QStringView text, qsizetype position, QStringView folded);

}  // namespace qbx
