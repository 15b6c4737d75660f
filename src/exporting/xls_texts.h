// The texts of an .xls workbook, which stand before its cells; a cell names its text by number.

#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "exporting/biff_stream.h"

namespace qbx {

/// Numbers texts in the order in which they first come. A bounded number of short ones is remembered, so that what repeats mostly has one
/// number; the others get a number each time. The same texts in the same order get the same numbers.
class TextNumbers {
 public:
  TextNumbers() : remembered_(kRemembered) {}

  struct Numbered {
    quint32 number;
    bool isNew;
  };
  /// \param text  not empty
  [[nodiscard]] Numbered Of(std::string_view text);
  /// How many texts got a number of their own.
  [[nodiscard]] quint32 Count() const { return count_; }

 private:
  static constexpr std::size_t kRemembered = std::size_t{1} << 14;
  struct Remembered {
    std::string text;
    quint32 number = 0;
  };

  std::vector<Remembered> remembered_;  // by hash
  quint32 count_ = 0;
};

/// Writes the table of the texts.
class TextTable {
 public:
  explicit TextTable(BiffStream& out);

  /// Counts a cell's text; writes it unless it is in the table. \param text  not empty
  void Add(std::string_view text);
  void Finish();

 private:
  [[nodiscard]] std::size_t Room() const { return kMostRecordBytes - bytes_; }
  void Write(const BiffText& text);
  void Continue();

  BiffStream& out_;
  qint64 counts_;  // where the numbers of cells and of texts stand
  std::size_t bytes_ = 8;
  quint32 cells_ = 0;
  TextNumbers numbers_;
};

}  // namespace qbx
