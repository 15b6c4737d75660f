// A report definition as it was read: what is where on the pages, and where the rows come from.

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

/// Lengths are in units of 1/1200 inch, for screen and paper. A letter can be placed on whole units, and whole numbers
/// are short in a file.
inline constexpr int kUnitsPerInch = 1200;
inline constexpr qreal kUnitsPerMillimetre = kUnitsPerInch / 25.4;
inline constexpr qreal kUnitsPerPoint = kUnitsPerInch / 72.0;

/// How much an object may exceed its room before it counts as too tall, because lengths are rounded.
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
  kPages,        ///< number of pages of the report; known when the last page was laid out
  kGroupPage,    ///< number of the page in its group, where a group counts its pages from 1
  kGroupPages,   ///< number of pages of this group
  kGroupNumber,  ///< 1 for the first group that counts its pages
  kSum,          ///< of a field: in a footer over the rows of its group or report, elsewhere over the rows so far
  kCount,        ///< number of rows, over the same rows
};

/// A part of a text: a literal, or a value that is looked up.
struct TextPiece {
  PieceKind kind = PieceKind::kLiteral;
  /// The literal, or the name of a field ("Customer"), a formula ("@Period") or a parameter ("@UserID").
  QString name = {};
  /// Of a date ("dd/MM/yyyy") or for the decimals of a number ("0.00"); empty for the program's usual form.
  QString format = {};
};

struct TextObject {
  std::vector<TextPiece> pieces;
  ReportStyle style;
  bool canGrow = false;      ///< downwards, with its content
  bool closeBlanks = false;  ///< leaves out empty lines
  qreal shrinkTo = 0;        ///< the least size in points to which the text shrinks until it fits; 0: it is cut instead
};

/// A field that holds RTF. It grows downwards and continues on the next page.
struct RichTextObject {
  QString field;
};

struct LineObject {
  QColor colour = Qt::black;
  qreal width = 1;
};

struct BoxObject {
  QColor border = Qt::black;  ///< invalid for none
  QColor fill = {};           ///< invalid for none
  qreal width = 1;
};

struct ImageObject {
  QImage image;  ///< scaled into the frame with its proportions; null for an optional image that is missing
};

struct ReportDefinition;

/// A report with its own rows at this place. It is the only object of its section.
struct SubreportObject {
  std::shared_ptr<ReportDefinition> definition;
  struct Link {
    QString parameter;  ///< a parameter of the subreport
    QString field;      ///< a field of the row around it
  };
  std::vector<Link> links;
};

enum class OnPages { kAll, kFirst, kLater };

struct ReportObject {
  int id = 0;    ///< its number in the definition, including subreports
  QRectF frame;  ///< in its section; of a line: from its first to its second end
  std::variant<TextObject, RichTextObject, LineObject, BoxObject, ImageObject, SubreportObject> what;
  /// In a list: the field of its column. When that column is hidden the object is removed, and objects further right
  /// move left.
  QString column = {};
  bool notOnHeadedPaper = false;  ///< left out on headed paper, on which it is printed already
  int line = 0;                   ///< line of the file, also below
};

struct ReportSection {
  /// The least height. A section grows with its objects, except page headers and footers, whose objects may be anywhere
  /// on the page.
  qreal height = 0;
  bool breakBefore = false;
  bool breakAfter = false;
  /// Of page headers and footers: on which pages of the report, or of the group that counts its pages.
  OnPages pages = OnPages::kAll;
  std::vector<ReportObject> objects;
  int line = 0;
};

/// Successive rows with the same value of a field.
struct ReportGroup {
  QString field;
  bool newPage = false;       ///< whether each group begins on a new page
  bool restartPages = false;  ///< counts its pages from 1 and is printed as one document, which begins on a new sheet
  bool drillDown = false;     ///< hides its details, which can be opened separately
  std::optional<ReportSection> header;
  std::optional<ReportSection> footer;
};

/// Where the rows come from: a table or a query in the report's database.
struct ReportSource {
  QString name;      ///< the table's own name
  QString location;  ///< where the table is read; its own name unless it was re-pointed
  QString where;     ///< a condition with parameters ("SessionID = {?@SessionID}"); empty for all rows
  QString orderBy;   ///< columns; empty for any order
  QString query;     ///< of a query: one SELECT with parameters; empty for a table
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
  std::optional<ReportSource> source;  ///< none for a report without rows
  std::vector<ParameterDefinition> parameters;
  std::vector<FormulaDefinition> formulas;

  std::optional<ReportSection> reportHeader;
  std::vector<ReportSection> pageHeaders;
  std::vector<ReportGroup> groups;  ///< from the outermost to the innermost
  std::vector<ReportSection> details;
  std::vector<ReportSection> pageFooters;
  std::optional<ReportSection> reportFooter;
};

/// The size of the sheet as it is used: wide when it is landscape.
[[nodiscard]] QSizeF SheetOf(const ReportPaper& paper);

/// Calls `visit` with every section of a report, but not with those of its subreports.
void ForEachSection(ReportDefinition& report, const std::function<void(ReportSection&)>& visit);
void ForEachSection(const ReportDefinition& report, const std::function<void(const ReportSection&)>& visit);

}  // namespace qbx
