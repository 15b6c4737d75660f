// Reports over rows that the test holds in memory.

#pragma once

#include <QProcess>
#include <algorithm>

#include "reports/page_painter.h"
#include "reports/pdf_export.h"
#include "reports/report.h"
#include "reports/report_error.h"
#include "support/printing.h"
#include "support/temp_folder.h"

namespace qbx::test {

/// Each statement gets the rows whose name it holds; those of "{...}" are found by the whole statement.
class HeldRows : public ReportDatabase {
 public:
  struct Table {
    QStringList columns;
    std::vector<std::vector<Value>> rows;
  };
  QHash<QString, Table> tables;
  QStringList statements;  ///< that were run

  std::unique_ptr<ReportRows> Read(const QString& statement) override {
    statements += statement;
    for (auto table = tables.constBegin(); table != tables.constEnd(); ++table)
      if (statement.contains(table.key())) return std::make_unique<Rows>(*table);
    return std::make_unique<Rows>(Table{});
  }

 private:
  class Rows : public ReportRows {
   public:
    explicit Rows(Table table) : table_(std::move(table)) {
      for (const QString& name : table_.columns)
        columns_.push_back({.name = name});
    }
    [[nodiscard]] const std::vector<Column>& Columns() const override { return columns_; }
    bool Next() override { return ++row_ < static_cast<int>(table_.rows.size()); }
    [[nodiscard]] Value At(int column) const override {
      return table_.rows[static_cast<size_t>(row_)][static_cast<size_t>(column)];
    }

   private:
    Table table_;
    std::vector<Column> columns_;
    int row_ = -1;
  };
};

/// A report with what a test says of it.
class TestReport {
 public:
  /// \param inside  what stands in the report element, without its page
  explicit TestReport(const QByteArray& inside, const QByteArray& page = "<page paper='A4'/>")
      : report(Report::Open(folder_.Write("test.rpt", "<report version='1'>" + page + inside + "</report>"))) {}

  /// The texts of each page from the top, as "text" or, with places, "text@y" in whole millimetres.
  /// \param pages  as PaintPage has it
  /// \param group  as `DrillDown` has it
  QStringList Pages(int pages = 0, bool places = false, const QStringList& group = {}) {
    QStringList all;
    const auto pager = report.LayOut(rows, group);
    while (auto page = pager->Next()) {
      std::ranges::stable_sort(page->objects, {}, [](const PlacedObject& placed) { return placed.frame.top(); });
      QStringList texts;
      for (const PlacedObject& placed : page->objects)
        texts += places ? QString("%1@%2").arg(ShownText(placed, pages)).arg(Millimetres(placed.frame.top()))
                        : ShownText(placed, pages);
      all += texts.join(u'|');
    }
    return all;
  }

  /// What pdftotext reads in the report's PDF. \param options  such as "-bbox"
  QString PdfText(const QStringList& options) {
    const QString pdf = folder_.File("test.pdf");
    EXPECT_TRUE(ExportPdf(report, report.LayOut(rows), pdf, {.title = "Test"}, [](const ReportPage&) { return true; }));
    QProcess process;
    process.start("pdftotext", options + QStringList{pdf, "-"});
    EXPECT_TRUE(process.waitForFinished()) << "pdftotext (poppler-utils) is missing";
    return QString::fromUtf8(process.readAllStandardOutput());
  }

  static int Millimetres(qreal units) { return qRound(units / kUnitsPerMillimetre); }

 private:
  TempFolder folder_;

 public:
  Report report;
  HeldRows rows;
};

}  // namespace qbx::test
