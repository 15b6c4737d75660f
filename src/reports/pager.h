// Pages out of bands.

#pragma once

#include <deque>
#include <memory>
#include <optional>

#include "reports/report_bands.h"

namespace qbx {

/// Lays out one page after the other; memory does not grow with their number. A page that shows of how many pages its group has is held back until the
/// group has ended.
class Pager {
 public:
  /// \param report  must outlive the pager and its pages
  /// \param group   as `BandSource` takes it
  Pager(const ReportDefinition& report, ParameterValues parameters, std::unique_ptr<ReportRows> rows, RowsReader reader,
        QStringList group = {});

  /// \return nothing behind the last page. There is always one page.
  [[nodiscard]] std::optional<ReportPage> Next();

 private:
  void LayOutPage();
  void BeginPage();
  void EndPage();
  /// Puts what finds room of the next band on the page, and steps to the next band when nothing of it is left.
  /// \return whether the page goes on
  bool PlaceBand();
  bool PlaceWhole();
  /// Begins a band that grew taller than a whole page: texts are cut at the bottom, and what was pushed below it goes on on the next page.
  /// \return false when nothing is left for another page
  bool PlacePart(qreal room);
  bool PlaceSlice();
  /// Takes off a band what finds room in a height.
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
  std::optional<ReportBand> band_;  // the next one to be placed
  ReportBand placed_;               // the last one that was, for its row
  ReportPage page_;
  PageNumbers numbers_;
  QString key_;                      // of the group that counts its pages
  qreal y_ = 0;                      // how far down the page is filled
  qreal bottom_ = 0;                 // how far down it may be
  bool empty_ = true;                // whether nothing stands on it yet
  std::vector<ReportPage> ofGroup_;  // of the group that has not ended
  std::deque<ReportPage> done_;      // ready to be given out
  ReportTotals noTotals_;            // before the first row
  bool ended_ = false;
};

}  // namespace qbx
