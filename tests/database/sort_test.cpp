// The order of a sorted recordset.

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "database/recordset.h"
#include "database/text_compare.h"
#include "hostdb/random_source.h"

namespace qbx {
namespace {

/// Rows of one text each.
class Texts final : public RowSource {
 public:
  explicit Texts(const std::vector<std::string>& texts) : texts_(texts) {}
  [[nodiscard]] const std::vector<Column>& Columns() const override { return columns_; }
  bool Next() override { return ++row_ < static_cast<int>(texts_.size()); }
  [[nodiscard]] Cell At(int) const override {
    Cell cell;
    cell.type = ValueType::kText;
    cell.utf8 = texts_[static_cast<std::size_t>(row_)];
    return cell;
  }

 private:
  const std::vector<std::string>& texts_;
  std::vector<Column> columns_ = {Column{.name = "Text"}};
  int row_ = -1;
};

// Letters that fold to ASCII (the Kelvin sign is a "k"), long letters, a zero character, and texts that differ only far
// behind their start.
TEST(RecordsetSort, AgreesWithComparingWholeTexts) {
  const std::vector<std::string> parts = {
      "a", "A", "b", "K", "\u212A", "k", "\u00E9", "\u00C9", "\U0001F600", std::string(1, '\0'), " ", "aaaaaaaa"};
  RandomSource random(3, 1);
  std::vector<std::string> texts(2000);
  for (std::string& text : texts) {
    for (int i = random.Between(0, 5); i > 0; --i)
      text += parts[static_cast<std::size_t>(random.Between(0, static_cast<int>(parts.size()) - 1))];
  }
  for (const bool descending : {false, true}) {
    Recordset rows = Recordset::ReadAll(std::make_unique<Texts>(texts));
    rows.Sort(0, descending);
    std::vector<std::string> expected = texts;
    std::stable_sort(expected.begin(), expected.end(), [descending](const std::string& left, const std::string& right) {
      return descending ? CompareNoCase(right, left) < 0 : CompareNoCase(left, right) < 0;
    });
    for (std::size_t i = 0; i < texts.size(); ++i)
      ASSERT_EQ(rows.At(static_cast<qint64>(i), 0).utf8, expected[i]) << i;
  }
}

}  // namespace
}  // namespace qbx
