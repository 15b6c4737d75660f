// A template taken apart once, for a run over many rows.

#pragma once

#include <QDate>
#include <QString>
#include <vector>

#include "merge/merge_fields.h"

namespace qbx {

/// Merges one template with many customers, in one pass a customer.
///
///   CompiledTemplate sms(record.SMS);
///   QString text;
///   for (...) { sms.Merge(values, clock.Today(), text); Send(text); }
///
/// Gives for every template and all values exactly the text of `MergeFields`. Where values could form new fields (a
/// value with a brace, a brace of the template left open in front of a field) it falls back to it.
class CompiledTemplate {
 public:
  explicit CompiledTemplate(const QString& text);

  /// \param merged  receives the text; what it held is lost, its memory is used again
  void Merge(const MergeValues& values, QDate today, QString& merged);

 private:
  /// Literal text, then the field behind it.
  struct Segment {
    qsizetype literalStart = 0;
    qsizetype literalLength = 0;
    int field = -1;  ///< position in the order of replacing, -1: none (the last segment)
  };

  void Compile();
  /// \return false when a value could form a field; `merged` is then unfinished
  template <bool RichText>
  [[nodiscard]] bool MergeInOnePass(const MergeValues& values, QString& merged) const;
  [[nodiscard]] const QString& ValueOf(int field, const MergeValues& values) const;

  QString text_;
  bool richText_ = false;
  bool onePass_ = true;  ///< the template by itself cannot form new fields
  std::vector<Segment> segments_;
  QDate today_;
  QString todayText_;
};

}  // namespace qbx
