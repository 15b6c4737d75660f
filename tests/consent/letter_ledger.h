// Knows what happened to each letter of a campaign.

#pragma once

#include <functional>
#include <limits>

#include "consent/ledger.h"

namespace qbx::consent {

/// The outcome of a run of letters.
struct LetterReport {
  bool finished = false;  ///< all letters were printed or saved, and nothing failed
  bool died = false;
  bool announced = false;  ///< its letters were recorded before they went out: the program itself saved or printed them
  QStringList log;         ///< its lines of the results log
};

/// The rules of the `Ledger` for letters. A letter is announced when it is made. It arrives when it is printed or its
/// file is written.
class LetterLedger {
 public:
  static constexpr int kAll = std::numeric_limits<int>::max();

  LetterLedger(Ledger& ledger, const World& world, Story& story, const Clock& clock)
      : ledger_(ledger), world_(world), story_(story), clock_(clock) {}

  QString letter;  ///< the template without its RTF

  /// \param again  whether letters that went out are made again
  void RunBegins(bool again);
  /// The world is about to change. \param made  the number of letters so far
  void Disturbs(int made);
  /// Another desk makes letters meanwhile. They are held against the world as it is now.
  void AtAnotherDesk(const std::function<void()>& run);
  /// \param number  of the letter in its run, 1 the first
  /// \param text    from a file, only its beginning up to the colon
  void Arrived(int number, const QString& text, const std::optional<QString>& nameAddress);
  /// The number of letters that arrived, in all runs.
  [[nodiscard]] int Count() const { return count_; }
  void RunEnds(const LetterReport& report, const std::vector<StoredRow>& stored);

 private:
  using Announcements = QHash<qint64, Announcement>;
  [[nodiscard]] Announcements LookAtAll() const;
  void Fault(const Row& row, const QString& what) {
    story_.Fault(QStringLiteral("the letter of %1 %2").arg(row.Name(), what));
  }
  void CheckRow(Row& row, const StoredRow& now, const LetterReport& report);
  void CheckDone(const Row& row, const LetterReport& report);

  Ledger& ledger_;
  const World& world_;
  Story& story_;
  const Clock& clock_;
  std::vector<std::pair<int, Announcements>> before_;
  QSet<qint64> arrivedNow_;
  bool again_ = false;
  int count_ = 0;
};

/// Reports the letters in a PDF file. Without the file, it reports none.
void ReadLetterFile(const QString& file, LetterLedger& letters);

/// A plain template as RTF.
[[nodiscard]] QString AsRtf(const QString& text);
/// Whether a letter can be delivered there.
[[nodiscard]] bool IsWholeAddress(const QString& address);

}  // namespace qbx::consent
