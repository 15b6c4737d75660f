// An opened report: what a program that drives the engine works with.

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

/// A definition with what it was filled with. Parameters, formulas and tables are those of the report and of its subreports, one after the other.
class Report {
 public:
  /// \throws ReportError
  [[nodiscard]] static Report Open(const QString& path);

  /// The parameter fields as they are named in public: "{?@UserID}". A subreport's that has the same name gets the same value.
  [[nodiscard]] QStringList ParameterFields() const;
  void SetCurrentValue(const QString& parameterField, const Value& value);

  /// The formula fields: "{@Period}".
  [[nodiscard]] QStringList FormulaFields() const;
  /// The text of the first such formula.
  [[nodiscard]] QString FormulaText(const QString& formulaField) const;
  /// \throws ReportError when the text is no formula
  void SetFormulaText(const QString& formulaField, const QString& text);

  /// The names of the tables and queries.
  [[nodiscard]] QStringList Tables() const;
  /// Reads each table elsewhere.
  /// \param filter  with "%" for the table's own name
  /// \throws ReportError for a query, which cannot be re-pointed
  void SetTableLocations(const QString& filter);

  void SetLandscape() { definition_->paper.landscape = true; }
  [[nodiscard]] const ReportPaper& Paper() const { return definition_->paper; }

  /// Whether a page says of how many pages the report is.
  [[nodiscard]] bool ShowsTotal() const;

  /// Whether a group counts its own pages: the report is made of letters or the like.
  [[nodiscard]] bool CountsDocuments() const;

  /// Takes the rows of the report from here instead of its table.
  void FeedFrom(Recordset records) { records_ = std::move(records); }
  /// Takes the columns of these fields out of a list that marks its columns; those right of them move up.
  void HideColumns(const QSet<QString>& fields);

  /// Whether a group hides its details until somebody looks at them.
  [[nodiscard]] bool OffersDrillDown() const;

  /// Reads the rows and begins to lay out; the report must outlive the pager.
  /// \param group  the group of a `DrillDown`, whose details alone are laid out; empty: the whole report
  /// \throws ReportError, DatabaseError
  [[nodiscard]] std::unique_ptr<Pager> LayOut(ReportDatabase& database, const QStringList& group = {}) const;

  /// The object that a page refers to.
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
