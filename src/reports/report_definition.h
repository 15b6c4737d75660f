// A report definition as it was read: what stands where on the pages, and where its rows come from.

#pragma once

#include <QColor>
#include <QImage>
#include <QRectF>
#include <QSizeF>
#include <QString>
#include <functional>
#include <memory>
#include <optional>
#include <variant>
#include <vector>

#include "reports/formula.h"

namespace qbx {

/// Lengths are units of 1/1200 inch, the same for screen and paper. Whole units are fine enough for the places of letters, and short in a file.
inline constexpr int kUnitsPerInch = 1200;
inline constexpr qreal kUnitsPerMillimetre = kUnitsPerInch / 25.4;
inline constexpr qreal kUnitsPerPoint = kUnitsPerInch / 72.0;

/// What may stick out of its room before it counts as too tall, since lengths are rounded.
inline constexpr qreal kLayoutTolerance = 6;

struct ReportStyle {
  QString family = QStringLiteral("Liberation Sans");
  qreal points = 10;
  bool bold = false;
  bool italic = false;
  bool underline = false;
  QColor colour = Qt::black;
  Qt::Alignment alignment = Qt::AlignLeft;
};

enum class PieceKind {
  kLiteral,
  kField,
  kFormula,
  kParameter,
  kPage,         ///< number of the page in the report
  kPages,        ///< of how many; known when the last page was laid out
  kGroupPage,    ///< number of the page in its group, where a group counts its pages from 1
  kGroupPages,   ///< of how many
  kGroupNumber,  ///< 1 for the first such group
  kSum,  ///< of a field, over the rows of the group or report whose footer it stands in; elsewhere over the rows so far
  kCount,  ///< of rows, likewise
};

/// A part of a text: a literal, or something that is looked up.
struct TextPiece {
  PieceKind kind = PieceKind::kLiteral;
  QString name =
      {};  ///< the literal itself, or the name of a field ("Customer"), formula ("@Period") or parameter ("@UserID")
  QString format =
      {};  ///< of a date ("dd/MM/yyyy") or a number of decimals ("0.00"); empty: as the program shows it elsewhere
};

struct TextObject {
  std::vector<TextPiece> pieces;
  ReportStyle style;
  bool canGrow = false;      ///< downwards, with what it holds
  bool closeBlanks = false;  ///< leaves out lines in which nothing stands
  qreal shrinkTo = 0;        ///< points down to which it is made smaller until it fits; 0: it is cut
};

/// A field that holds RTF. It grows downwards and goes on on the next page.
struct RichTextObject {
  QString field;
};

struct LineObject {
  QColor colour = Qt::black;
  qreal width = 1;
};

struct BoxObject {
  QColor border = Qt::black;  ///< invalid: none
  QColor fill = {};           ///< invalid: none
  qreal width = 1;
};

struct ImageObject {
  QImage image;  ///< keeps its proportions inside the frame; null: an optional one that is not there
};

struct ReportDefinition;

/// Rows of its own at this place, one below the other. It stands alone in its section.
struct SubreportObject {
  std::shared_ptr<ReportDefinition> definition;
  struct Link {
    QString parameter;  ///< of the subreport
    QString field;      ///< of the row around it
  };
  std::vector<Link> links;
};

enum class OnPages { kAll, kFirst, kLater };

struct ReportObject {
  int id = 0;    ///< its place in the definition, subreports included
  QRectF frame;  ///< in its section; of a line: from its top left to its bottom right corner
  std::variant<TextObject, RichTextObject, LineObject, BoxObject, ImageObject, SubreportObject> what;
  QString column =
      {};  ///< of a list: the field whose column it belongs to; goes when that column is hidden, and those right of it move up
  bool notOnHeadedPaper = false;  ///< paper that has it printed leaves it out
  int line = 0;                   ///< of the file, as in what follows
};

struct ReportSection {
  qreal height =
      0;  ///< at least: it grows with its objects, except in page headers and footers, whose objects may stand anywhere on the page
  bool breakBefore = false;
  bool breakAfter = false;
  OnPages pages = OnPages::
      kAll;  ///< of page headers and footers: the first page of the report, or of the group that counts its pages
  std::vector<ReportObject> objects;
  int line = 0;
};

/// Rows that follow each other and are equal in a field.
struct ReportGroup {
  QString field;
  bool newPage = false;  ///< each begins on a new page
  bool restartPages =
      false;               ///< counts its pages from 1, and is what is printed as one: it begins on a sheet of its own
  bool drillDown = false;  ///< hides what is inside it, which is looked at by itself
  std::optional<ReportSection> header;
  std::optional<ReportSection> footer;
};

/// Where the rows come from: a table or a query, on the database that the report is logged on to.
struct ReportSource {
  QString name;      ///< the table's own name
  QString location;  ///< where it is read, its own name unless it was re-pointed
  QString where;     ///< a condition with parameters ("SessionID = {?@SessionID}"); empty: all rows
  QString orderBy;   ///< columns; empty: as they come
  QString query;     ///< of a query: its one SELECT with parameters; empty: a table
  int line = 0;
};

enum class ParameterType { kText, kNumber, kDate };

struct ParameterDefinition {
  QString name;  ///< "@UserID"
  ParameterType type = ParameterType::kText;
};

struct FormulaDefinition {
  QString name;  ///< "@Period"
  Formula formula;
  int line = 0;
};

struct ReportPaper {
  QSizeF size = QSizeF(210, 297) * kUnitsPerMillimetre;  ///< upright
  bool landscape = false;
  qreal left = 0, top = 0, right = 0, bottom = 0;  ///< margins
};

struct ReportDefinition {
  ReportPaper paper;
  std::optional<ReportSource> source;  ///< none: a report without rows
  std::vector<ParameterDefinition> parameters;
  std::vector<FormulaDefinition> formulas;

  std::optional<ReportSection> reportHeader;
  std::vector<ReportSection> pageHeaders;
  std::vector<ReportGroup> groups;  ///< from the outermost to the innermost
  std::vector<ReportSection> details;
  std::vector<ReportSection> pageFooters;
  std::optional<ReportSection> reportFooter;
};

/// The sheet as it lies.
[[nodiscard]] QSizeF SheetOf(const ReportPaper& paper);

/// Calls `visit` with every section of a report, those of its subreports left out.
void ForEachSection(ReportDefinition& report, const std::function<void(ReportSection&)>& visit);
void ForEachSection(const ReportDefinition& report, const std::function<void(const ReportSection&)>& visit);

}  // namespace qbx
