#include "queries/filter_notes.h"

#include <algorithm>

#include "queries/filter_table.h"
#include "util/text.h"
#include "util/typed_number.h"

namespace qbx {

namespace {

QString NumberNote(const std::array<QString, 2>& typed, const FilterCondition& condition) {
  if (condition.twoValues && TypedNumber(typed[0]) > TypedNumber(typed[1]))
    return QStringLiteral("The first number is above the second.");
  const auto read = [&typed](size_t value) { return TypedNumberText(typed[value]); };
  if (!condition.twoValues) return IsTypedNumber(typed[0]) ? QString() : QStringLiteral("Read as %1.").arg(read(0));
  if (std::ranges::all_of(typed, IsTypedNumber)) return {};
  return QStringLiteral("Read as %1 and %2.").arg(read(0), read(1));
}

}  // namespace

QString FilterNote(const Filters& filters, FilterIndex filter) {
  const FilterRow& row = FilterRows()[filter];
  if (!filters.Ticked(filter) || row.conditions.empty()) return {};
  const FilterCondition* const condition = ConditionAt(row, filters.cmbFilter[filter]);
  if (condition == nullptr) return QStringLiteral("Not applied: choose a condition.");
  if (row.numbers != nullptr) return NumberNote(filters.*row.numbers, *condition);
  const bool empty = TrimBlanks(filters.*row.text).isEmpty();
  return empty && condition->withoutValue != nullptr ? QString::fromLatin1(condition->withoutValue) : QString();
}

QStringList FilterNotes(const Filters& filters, bool boatEdition) {
  QStringList notes;
  for (const FilterRow& row : FilterRows()) {
    if (const QString note = FilterNote(filters, row.index); !note.isEmpty())
      notes += FilterWording(row.caption, boatEdition) + QLatin1String(": ") + note;
  }
  return notes;
}

QStringList NumbersReadAnew(const CampaignRecord& record, bool boatEdition) {
  QStringList sentences;
  for (const FilterRow& row : FilterRows()) {
    if (row.numbers == nullptr || !row.IsStored() || !(record.*row.use)) continue;
    const FilterCondition* const condition = ConditionAt(row, record.*row.when);
    for (size_t value = 0; condition != nullptr && value < (condition->twoValues ? 2U : 1U); ++value) {
      const QString& text = record.*row.values[value];
      const double before = LeadingNumber(text);
      if (before == TypedNumber(text)) continue;
      sentences +=
          QStringLiteral("%1: \"%2\" was read as %3 before and is read as %4 now.")
              .arg(FilterWording(row.caption, boatEdition), text, ShortestNumber(before), TypedNumberText(text));
    }
  }
  return sentences;
}

}  // namespace qbx
