// Putting bands on pages.

#pragma once

#include <deque>
#include <memory>
#include <optional>

#include "reports/report_bands.h"

namespace qbx {

/// Lays out one page after the other; memory does not grow with their number. The pages of a group that shows its
/// number of pages are held back until the group has ended.
class Pager {
 public:
  /// \param report  must outlive the pager and its pages
  /// \param group   as for `BandSource`
  Pager(const ReportDefinition& report, ParameterValues parameters, std::unique_ptr<ReportRows> rows, RowsReader reader,
        QStringList group = {});

  /// \return nothing after the last page. There is at least one page.
  [[nodiscard]] std::optional<ReportPage> Next();

 private:
  void LayOutPage();
  void BeginPage();
  void EndPage();
  /// Puts as much of the next band on the page as fits, and steps to the next band when the whole band is placed.
  /// \return whether more can be put on the page
  bool PlaceBand();
  bool PlaceWhole();
  /// Begins a band that is taller than a whole page: texts are cut at the bottom, and objects pushed below it follow on
  /// the next page.
  /// \return false when nothing is left for another page
  bool PlacePart(qreal room);
  bool PlaceSlice();
  /// Removes from a band what fits into a height.
  [[nodiscard]] std::vector<PlacedObject> TakeSlice(ReportBand& band, qreal room) const;
  [[nodiscard]] QString KeyOf(const ReportBand& band) const;
  void PlaceSections(const std::vector<ReportSection>& sections, qreal y);
  [[nodiscard]] qreal HeightOf(const std::vector<ReportSection>& sections) const;
  [[nodiscard]] bool Shows(const ReportSection& section) const;
  void PutOnPage(std::vector<PlacedObject> objects, qreal y);
  void FinishGroup();

  const ReportDefinition& report_;
  ParameterValues parameters_;
  BandSource bands_;
  bool holdsBack_;                  // whether a group counts its pages
  std::optional<ReportBand> band_;  // the next band to be placed
  ReportBand placed_;               // the band that was placed last, for its row
  ReportPage page_;
  PageNumbers numbers_;
  QString key_;                      // value of the group that counts its pages
  qreal y_ = 0;                      // the filled height of the page
  qreal bottom_ = 0;                 // the lower limit for bands
  bool empty_ = true;                // whether the page has no band yet
  std::vector<ReportPage> ofGroup_;  // pages of the group that has not ended
  std::deque<ReportPage> done_;      // pages that can be given out
  ReportTotals noTotals_;            // the totals before the first row
  bool ended_ = false;
};

}  // namespace qbx
