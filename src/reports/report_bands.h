// The rows of a report as a stream of bands from top to bottom, before they are put on pages.

#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <variant>
#include <vector>

#include "reports/report_definition.h"
#include "reports/report_page.h"
#include "reports/report_rows.h"
#include "reports/report_values.h"

namespace qbx {

/// Reads the rows of a source with these parameters.
using RowsReader = std::function<std::unique_ptr<ReportRows>(const ReportSource& source, const ReportDefinition& report,
                                                             const ParameterValues& parameters)>;

/// A section filled with the values of one row.
struct ReportBand {
  std::vector<PlacedObject> objects = {};  ///< frames from the top left corner of the band
  qreal height = 0;
  bool breakBefore = false;
  bool breakAfter = false;
  bool beginsGroup = false;    ///< whether a group that counts its pages begins here
  QStringList drillDown = {};  ///< of a group that hides its details: as in `DrillDown`
  std::shared_ptr<const ReportRow> row = {};
  std::shared_ptr<const ReportTotals> totals = {};  ///< including this row
};

/// Makes the band of a section: fills its objects in, and lets them and the section grow to the height that they need.
[[nodiscard]] ReportBand MakeBand(const ReportSection& section, const ReportValues& values);

/// Steps through the bands of a report, with those of its subreports in their places.
class BandSource {
 public:
  /// \param group  the group whose details alone are wanted, as in `DrillDown`; empty for the whole report
  BandSource(const ReportDefinition& report, ParameterValues parameters, std::unique_ptr<ReportRows> rows,
             RowsReader reader, QStringList group = {});
  ~BandSource();

  /// \return nothing after the last band
  [[nodiscard]] std::optional<ReportBand> Next();

 private:
  using Row = std::shared_ptr<const ReportRow>;
  /// A subreport that is not run yet, and the row around it.
  struct WaitingSubreport {
    const SubreportObject* object;
    Row row;
  };

  void Begin();
  void Advance();
  void End();
  [[nodiscard]] Row ReadRow();
  void OpenGroups(size_t from);
  void CloseGroups(size_t from);
  void AddDetails();
  [[nodiscard]] QStringList GroupsOf(const ReportRow& row, qsizetype count) const;
  [[nodiscard]] bool Shows(size_t group) const { return group >= firstShown_ && group <= hiding_; }
  [[nodiscard]] QStringList DrillDownOf(size_t group) const;
  /// \param level  the level of the totals that the section shows
  void Add(const ReportSection& section, size_t level, const ReportBand& flags = {});
  [[nodiscard]] size_t FirstChangedGroup() const;
  void StartSubreport(const WaitingSubreport& waiting);
  [[nodiscard]] std::optional<ReportBand> NextOfSubreport();

  const ReportDefinition& report_;
  ParameterValues parameters_;
  std::unique_ptr<ReportRows> rows_;
  RowsReader reader_;
  QStringList group_;
  size_t firstShown_;                           // the outermost group that is shown
  size_t hiding_;                               // the group that hides its details; the number of groups when none does
  std::shared_ptr<const ColumnNames> columns_;  // of the rows
  ReportTotals totals_;
  Row row_;   // the row whose bands are being made; null before the first
  Row next_;  // the row after it; null after the last
  std::deque<std::variant<ReportBand, WaitingSubreport>> ready_;
  std::unique_ptr<BandSource> subreport_;
  bool begun_ = false;
  bool ended_ = false;
};

}  // namespace qbx
