// An opened report: the interface of the report engine.

#pragma once

#include <QSet>
#include <QString>
#include <memory>
#include <optional>
#include <vector>

#include "database/recordset.h"
#include "reports/pager.h"
#include "reports/report_definition.h"
#include "reports/report_values.h"

namespace qbx {

/// Reads the rows of reports.
class ReportDatabase {
 public:
  virtual ~ReportDatabase() = default;
  /// \param statement  one SELECT
  /// \throws ReportError, DatabaseError
  [[nodiscard]] virtual std::unique_ptr<ReportRows> Read(const QString& statement) = 0;
};

/// A definition and the values filled in. Lists of parameters, formulas and tables begin with those of the report;
/// those of its subreports follow.
class Report {
 public:
  /// \throws ReportError
  [[nodiscard]] static Report Open(const QString& path);

  /// The parameter fields with their public names: "{?@UserID}". Subreports share the values of parameters with the
  /// same name.
  [[nodiscard]] QStringList ParameterFields() const;
  void SetCurrentValue(const QString& parameterField, const Value& value);

  /// The formula fields with their public names: "{@Period}".
  [[nodiscard]] QStringList FormulaFields() const;
  /// The text of the first formula with this name.
  [[nodiscard]] QString FormulaText(const QString& formulaField) const;
  /// \throws ReportError when the text is no formula
  void SetFormulaText(const QString& formulaField, const QString& text);

  /// The names of the tables and queries.
  [[nodiscard]] QStringList Tables() const;
  /// Reads each table from another place.
  /// \param filter  with "%" for the table's own name
  /// \throws ReportError for a query, which cannot be re-pointed
  void SetTableLocations(const QString& filter);

  void SetLandscape() { definition_->paper.landscape = true; }
  [[nodiscard]] const ReportPaper& Paper() const { return definition_->paper; }

  /// Whether a page shows the number of pages of the report.
  [[nodiscard]] bool ShowsTotal() const;

  /// Whether a group counts its own pages, that is, whether the report consists of documents such as letters.
  [[nodiscard]] bool CountsDocuments() const;

  /// Uses these rows for the report instead of its table.
  void FeedFrom(Recordset records) { records_ = std::move(records); }
  /// Removes the columns of these fields from a list that marks its columns; columns further right move left.
  void HideColumns(const QSet<QString>& fields);

  /// Whether a group hides its details until somebody opens them.
  [[nodiscard]] bool OffersDrillDown() const;

  /// Reads the rows and begins to lay out. The report must outlive the pager.
  /// \param group  the group of a `DrillDown`, of which only the details are laid out; empty for the whole report
  /// \throws ReportError, DatabaseError
  [[nodiscard]] std::unique_ptr<Pager> LayOut(ReportDatabase& database, const QStringList& group = {}) const;

  /// The objects by the numbers with which pages refer to them.
  [[nodiscard]] const std::vector<const ReportObject*>& Objects() const { return objects_; }

 private:
  explicit Report(std::shared_ptr<ReportDefinition> definition);
  void FindParts(const std::shared_ptr<ReportDefinition>& part);
  void FindObjects();

  std::shared_ptr<ReportDefinition> definition_;
  std::vector<std::shared_ptr<ReportDefinition>> parts_;  // the report and its subreports
  std::vector<const ReportObject*> objects_;              // by their id
  ParameterValues parameters_;
  std::optional<Recordset> records_;
};

}  // namespace qbx
