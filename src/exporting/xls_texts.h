// The texts of an .xls workbook. They precede its cells; a cell refers to its text by number.

#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "exporting/biff_stream.h"

namespace qbx {

/// Numbers texts in the order in which they first come. A limited number of short texts is remembered, so most repeated
/// texts share one number. Any other text gets a new number each time. The same texts in the same order get the same
/// numbers.
class TextNumbers {
 public:
  TextNumbers() : remembered_(kRemembered) {}

  struct Numbered {
    quint32 number;
    bool isNew;
  };
  /// \param text  not empty
  [[nodiscard]] Numbered Of(std::string_view text);
  /// How many numbers were given out.
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

  /// Counts a cell's text and writes it unless the table holds it. \param text  not empty
  void Add(std::string_view text);
  void Finish();

 private:
  [[nodiscard]] std::size_t Room() const { return kMostRecordBytes - bytes_; }
  void Write(const BiffText& text);
  void Continue();

  BiffStream& out_;
  qint64 counts_;  // where the numbers of cells and of texts are to be written
  std::size_t bytes_ = 8;
  quint32 cells_ = 0;
  TextNumbers numbers_;
};

}  // namespace qbx
