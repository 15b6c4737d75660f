// A template parsed once and merged with many rows.

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
/// The result is always the text that `MergeFields` gives. It calls `MergeFields` where a value could form a new field:
/// when a value holds a brace, or when a brace of the template is open before a field.
class CompiledTemplate {
 public:
  explicit CompiledTemplate(const QString& text);

  /// \param merged  receives the text; its old content is lost, its memory is used again
  void Merge(const MergeValues& values, QDate today, QString& merged);

 private:
  /// Literal text and the field that follows it.
  struct Segment {
    qsizetype literalStart = 0;
    qsizetype literalLength = 0;
    int field = -1;  ///< index in the order of replacing; -1 in the last segment, which has no field
  };

  void Compile();
  /// \return false when a value could form a field; `merged` is then unfinished
  template <bool RichText>
  [[nodiscard]] bool MergeInOnePass(const MergeValues& values, QString& merged) const;
  [[nodiscard]] const QString& ValueOf(int field, const MergeValues& values) const;

  QString text_;
  bool richText_ = false;
  bool onePass_ = true;  ///< whether the template itself cannot form new fields
  std::vector<Segment> segments_;
  QDate today_;
  QString todayText_;
};

}  // namespace qbx
