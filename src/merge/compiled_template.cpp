#include "merge/compiled_template.h"

#include <array>
#include <cstring>

#include "merge/field_patterns.h"

namespace qbx {
namespace {

/// Follows the braces of a template to see whether a brace outside the fields could begin a new field together with a
/// value.
class OpenBrace {
 public:
  explicit OpenBrace(bool richText) : richText_(richText) {}

  /// Takes one code unit of literal text.
  void Literal(char16_t unit) {
    if (unit == u'{') {
      open_ = !richText_ || escaped_;
    } else if (unit == u'}' || (richText_ && unit == u'\\')) {
      open_ = false;
    }
    escaped_ = unit == u'\\';
  }

  /// Takes a field. Its value is any text without an opening brace (in rich text, without a backslash either).
  /// \return whether the text before the field could become a field together with the value
  [[nodiscard]] bool Field() {
    // A backslash right before the field would escape a brace right after it when the value is empty.
    const bool dangerous = open_ || (richText_ && escaped_);
    escaped_ = false;
    return dangerous;
  }

 private:
  bool richText_;
  bool open_ = false;
  bool escaped_ = false;
};

/// Copies a value to `out` and moves `out` to its end.
/// \return false when the value holds a character that could begin a field. A closing brace is harmless here: OpenBrace
///         finds the opening brace that it would close.
template <bool RichText>
bool CopyHarmless(const QString& value, char16_t*& out) {
  const char16_t* units = reinterpret_cast<const char16_t*>(value.constData());
  const qsizetype size = value.size();
  unsigned harmful = 0;
  for (qsizetype i = 0; i < size; ++i) {
    const char16_t unit = units[i];
    harmful |= static_cast<unsigned>(unit == u'{');
    if constexpr (RichText) harmful |= static_cast<unsigned>(unit == u'\\');
    out[i] = unit;
  }
  out += size;
  return harmful == 0;
}

}  // namespace

CompiledTemplate::CompiledTemplate(const QString& text) : text_(text), richText_(IsRichText(text)) {
  Compile();
}

void CompiledTemplate::Compile() {
  std::array<QString, kMergeFields.size()> patterns;
  for (size_t i = 0; i < patterns.size(); ++i)
    patterns[i] = FieldPattern(kMergeFields[i], richText_);
  const char16_t opening = patterns[0].front().unicode();

  OpenBrace braces(richText_);
  qsizetype literalStart = 0;
  for (qsizetype i = 0; i < text_.size();) {
    const char16_t unit = text_[i].unicode();
    size_t field = unit == opening ? 0 : patterns.size();
    while (field < patterns.size() && !MatchesAt(text_, i, patterns[field]))
      ++field;
    if (field == patterns.size()) {
      braces.Literal(unit);
      ++i;
      continue;
    }
    if (braces.Field()) onePass_ = false;
    segments_.push_back({literalStart, i - literalStart, static_cast<int>(field)});
    i += patterns[field].size();
    literalStart = i;
  }
  segments_.push_back({literalStart, text_.size() - literalStart, -1});
}

void CompiledTemplate::Merge(const MergeValues& values, QDate today, QString& merged) {
  if (today != today_) {
    today_ = today;
    todayText_ = MergeDate(today);
  }
  const bool done =
      onePass_ && (richText_ ? MergeInOnePass<true>(values, merged) : MergeInOnePass<false>(values, merged));
  if (!done) merged = MergeFields(text_, values, today);
}

const QString& CompiledTemplate::ValueOf(int field, const MergeValues& values) const {
  const auto member = kMergeFields[static_cast<size_t>(field)].value;
  return member ? values.*member : todayText_;
}

template <bool RichText>
bool CompiledTemplate::MergeInOnePass(const MergeValues& values, QString& merged) const {
  qsizetype size = 0;
  for (const Segment& segment : segments_) {
    size += segment.literalLength;
    if (segment.field >= 0) size += ValueOf(segment.field, values).size();
  }
  merged.resize(size);
  char16_t* out = reinterpret_cast<char16_t*>(merged.data());
  const char16_t* text = reinterpret_cast<const char16_t*>(text_.constData());
  for (const Segment& segment : segments_) {
    std::memcpy(out, text + segment.literalStart, static_cast<size_t>(segment.literalLength) * sizeof(char16_t));
    out += segment.literalLength;
    if (segment.field >= 0 && !CopyHarmless<RichText>(ValueOf(segment.field, values), out)) return false;
  }
  return true;
}

}  // namespace qbx
