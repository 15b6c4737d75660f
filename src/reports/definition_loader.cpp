#include "reports/definition_loader.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QPageSize>

#include "reports/definition_checks.h"
#include "reports/definition_xml.h"
#include "reports/report_error.h"

namespace qbx {

namespace {

bool Flag(const XmlElement& element, const char* attribute, bool otherwise = false) {
  return element.Has(attribute) ? element.Attribute(attribute) == QLatin1String("yes") : otherwise;
}

qreal Length(const XmlElement& element, const char* attribute) {
  return element.Attribute(attribute).toDouble() * kUnitsPerMillimetre;
}

/// `style` with the attributes of the element applied.
ReportStyle StyleOf(const XmlElement& element, ReportStyle style) {
  if (element.Has("font")) style.family = element.Attribute("font");
  if (element.Has("points")) style.points = element.Attribute("points").toDouble();
  style.bold = Flag(element, "bold", style.bold);
  style.italic = Flag(element, "italic", style.italic);
  style.underline = Flag(element, "underline", style.underline);
  if (element.Has("colour")) style.colour = QColor(element.Attribute("colour"));
  const QString align = element.Attribute("align");
  if (align == QLatin1String("left")) style.alignment = Qt::AlignLeft;
  if (align == QLatin1String("centre")) style.alignment = Qt::AlignHCenter;
  if (align == QLatin1String("right")) style.alignment = Qt::AlignRight;
  return style;
}

TextPiece PieceOf(const XmlElement& element) {
  static const QHash<QString, PieceKind> kKinds = {
      {QStringLiteral("field"), PieceKind::kField},           {QStringLiteral("formula"), PieceKind::kFormula},
      {QStringLiteral("parameter"), PieceKind::kParameter},   {QStringLiteral("sum"), PieceKind::kSum},
      {QStringLiteral("count"), PieceKind::kCount},           {QStringLiteral("page"), PieceKind::kPage},
      {QStringLiteral("pages"), PieceKind::kPages},           {QStringLiteral("groupPage"), PieceKind::kGroupPage},
      {QStringLiteral("groupPages"), PieceKind::kGroupPages}, {QStringLiteral("groupNumber"), PieceKind::kGroupNumber},
  };
  if (element.Name() == QLatin1String("br")) return {PieceKind::kLiteral, QStringLiteral("\n")};
  return {kKinds.value(element.Name()), element.Attribute("name"), element.Attribute("format")};
}

/// Turns every sequence of blanks and line breaks into one blank. The first and the last part of a text lose those at
/// its ends.
QString OneBlank(const QString& text, bool first, bool last) {
  QString shorter = text.simplified();
  if (shorter.isEmpty()) return first || last ? QString() : QStringLiteral(" ");
  if (!first && text.front().isSpace()) shorter.prepend(u' ');
  if (!last && text.back().isSpace()) shorter.append(u' ');
  return shorter;
}

std::vector<TextPiece> PiecesOf(const XmlElement& element) {
  std::vector<TextPiece> pieces;
  const std::vector<XmlPart> parts = element.Parts();
  for (size_t i = 0; i < parts.size(); ++i) {
    if (parts[i].element) {
      pieces.push_back(PieceOf(*parts[i].element));
      continue;
    }
    const QString text = OneBlank(parts[i].text, i == 0, i + 1 == parts.size());
    if (!text.isEmpty()) pieces.push_back({PieceKind::kLiteral, text});
  }
  return pieces;
}

/// Reads one definition.
class DefinitionLoader {
 public:
  explicit DefinitionLoader(const QString& path) : path_(path) {}

  std::shared_ptr<ReportDefinition> Load(const XmlElement& root) {
    auto report = std::make_shared<ReportDefinition>();
    report->paper = Paper(*root.Child("page"));
    ReadBody(root, {}, *report);
    CheckDefinition(*report, path_);
    return report;
  }

 private:
  [[noreturn]] void Fail(const XmlElement& element, const QString& text) const {
    throw ReportError{text, path_, element.Line()};
  }

  ReportPaper Paper(const XmlElement& page) const {
    static const QHash<QString, QPageSize::PageSizeId> kSizes = {{QStringLiteral("A5"), QPageSize::A5},
                                                                 {QStringLiteral("Letter"), QPageSize::Letter},
                                                                 {QStringLiteral("Legal"), QPageSize::Legal}};
    const QPageSize size(kSizes.value(page.Attribute("paper"), QPageSize::A4));
    return {.size = size.size(QPageSize::Millimeter) * kUnitsPerMillimetre,
            .landscape = page.Attribute("orientation") == QLatin1String("landscape"),
            .left = Length(page, "left"),
            .top = Length(page, "top"),
            .right = Length(page, "right"),
            .bottom = Length(page, "bottom")};
  }

  /// Reads what reports and subreports have in common.
  void ReadBody(const XmlElement& element, const ReportStyle& outer, ReportDefinition& report) {
    const ReportStyle style = StyleOf(element, outer);
    for (const XmlElement& child : element.Children()) {
      const QString name = child.Name();
      if (name == QLatin1String("table") || name == QLatin1String("query")) report.source = Source(child);
      if (name == QLatin1String("parameter")) report.parameters.push_back(Parameter(child));
      if (name == QLatin1String("formula")) report.formulas.push_back(FormulaOf(child));
      if (name == QLatin1String("reportHeader")) report.reportHeader = Section(child, style);
      if (name == QLatin1String("pageHeader")) report.pageHeaders.push_back(Section(child, style));
      if (name == QLatin1String("group")) report.groups.push_back(Group(child, style));
      if (name == QLatin1String("detail")) report.details.push_back(Section(child, style));
      if (name == QLatin1String("pageFooter")) report.pageFooters.push_back(Section(child, style));
      if (name == QLatin1String("reportFooter")) report.reportFooter = Section(child, style);
    }
  }

  ReportSource Source(const XmlElement& element) const {
    ReportSource source{.name = element.Attribute("name"),
                        .location = element.Attribute("name"),
                        .where = element.Attribute("where"),
                        .orderBy = element.Attribute("orderBy"),
                        .query = {},
                        .line = element.Line()};
    if (element.Name() != QLatin1String("query")) return source;
    source.query = element.Text().trimmed();
    if (source.query.isEmpty()) Fail(element, QStringLiteral("The query is empty."));
    return source;
  }

  ParameterDefinition Parameter(const XmlElement& element) const {
    const QString type = element.Attribute("type");
    return {.name = element.Attribute("name"),
            .type = type == QLatin1String("number") ? ParameterType::kNumber
                    : type == QLatin1String("date") ? ParameterType::kDate
                                                    : ParameterType::kText};
  }

  FormulaDefinition FormulaOf(const XmlElement& element) const {
    try {
      return {.name = element.Attribute("name"),
              .formula = Formula::Parse(element.Text().trimmed()),
              .line = element.Line()};
    } catch (const ReportError& error) {
      Fail(element, error.text);
    }
  }

  ReportGroup Group(const XmlElement& element, const ReportStyle& style) {
    ReportGroup group{.field = element.Attribute("field"),
                      .newPage = Flag(element, "newPage") || Flag(element, "restartPages"),
                      .restartPages = Flag(element, "restartPages"),
                      .drillDown = Flag(element, "drillDown"),
                      .header = {},
                      .footer = {}};
    if (const auto header = element.Child("header")) group.header = Section(*header, style);
    if (const auto footer = element.Child("footer")) group.footer = Section(*footer, style);
    return group;
  }

  ReportSection Section(const XmlElement& element, const ReportStyle& outer) {
    const ReportStyle style = StyleOf(element, outer);
    const QString pages = element.Attribute("pages");
    ReportSection section{.height = Length(element, "height"),
                          .breakBefore = Flag(element, "breakBefore"),
                          .breakAfter = Flag(element, "breakAfter"),
                          .pages = pages == QLatin1String("first")   ? OnPages::kFirst
                                   : pages == QLatin1String("later") ? OnPages::kLater
                                                                     : OnPages::kAll,
                          .objects = {},
                          .line = element.Line()};
    for (const XmlElement& child : element.Children())
      section.objects.push_back(Object(child, style));
    return section;
  }

  ReportObject Object(const XmlElement& element, const ReportStyle& style) {
    return {.id = nextId_++,
            .frame = {Length(element, "x"), Length(element, "y"), Length(element, "width"), Length(element, "height")},
            .what = KindOfObject(element, style),
            .column = element.Attribute("column"),
            .notOnHeadedPaper = !Flag(element, "onHeadedPaper", true),
            .line = element.Line()};
  }

  std::variant<TextObject, RichTextObject, LineObject, BoxObject, ImageObject, SubreportObject> KindOfObject(
      const XmlElement& element, const ReportStyle& style) {
    const QString name = element.Name();
    if (name == QLatin1String("richText")) return RichTextObject{element.Attribute("field")};
    if (name == QLatin1String("line")) return LineObject{.colour = StrokeColour(element), .width = Stroke(element)};
    if (name == QLatin1String("box"))
      return BoxObject{.border = StrokeColour(element),
                       .fill = element.Has("fill") ? QColor(element.Attribute("fill")) : QColor(),
                       .width = Stroke(element)};
    if (name == QLatin1String("image")) return ImageObject{Image(element)};
    if (name == QLatin1String("subreport")) return Subreport(element, style);
    return TextObject{.pieces = PiecesOf(element),
                      .style = StyleOf(element, style),
                      .canGrow = Flag(element, "canGrow"),
                      .closeBlanks = Flag(element, "closeBlanks"),
                      .shrinkTo = element.Attribute("shrinkTo").toDouble()};
  }

  static QColor StrokeColour(const XmlElement& element) {
    if (!element.Has("colour")) return Qt::black;
    return element.Attribute("colour") == QLatin1String("none") ? QColor() : QColor(element.Attribute("colour"));
  }

  static qreal Stroke(const XmlElement& element) {
    return element.Has("stroke") ? Length(element, "stroke") : kUnitsPerPoint / 2;
  }

  SubreportObject Subreport(const XmlElement& element, const ReportStyle& style) {
    if (++subreportDepth_ > kMaxSubreportDepth)
      Fail(element, QStringLiteral("Subreports stand in each other more than %1 deep.").arg(kMaxSubreportDepth));
    SubreportObject subreport;
    subreport.definition = std::make_shared<ReportDefinition>();
    ReadBody(element, style, *subreport.definition);
    for (const XmlElement& link : element.Children("link"))
      subreport.links.push_back({link.Attribute("parameter"), link.Attribute("field")});
    --subreportDepth_;
    return subreport;
  }

  /// An image in or below the folder of the definition.
  QImage Image(const XmlElement& element) {
    const QString name = element.Attribute("file");
    const QString folder = QFileInfo(path_).dir().canonicalPath();
    const QFileInfo file(QDir(folder).filePath(name));
    if (!file.exists() && Flag(element, "optional")) return {};
    if (!file.exists()) Fail(element, QStringLiteral("The image is missing: %1").arg(name));
    if (!file.canonicalFilePath().startsWith(folder + u'/') || !file.isFile())
      Fail(element, QStringLiteral("An image must stand below the folder of the definition: %1").arg(name));
    if (file.size() > kMaxImageBytes) Fail(element, QStringLiteral("The image is too large: %1").arg(name));
    QImageReader reader(file.canonicalFilePath());
    const QSize size = reader.size();
    pixels_ += qint64{size.width()} * size.height();
    if (pixels_ > kMaxImagePixels) Fail(element, QStringLiteral("The image has too many pixels: %1").arg(name));
    QImage image = size.isValid() ? reader.read() : QImage();
    if (image.isNull()) Fail(element, QStringLiteral("The image cannot be read: %1").arg(name));
    return image;
  }

  QString path_;
  int nextId_ = 0;
  int subreportDepth_ = 0;
  qint64 pixels_ = 0;  // of all images read so far
};

}  // namespace

std::shared_ptr<ReportDefinition> LoadDefinition(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) throw ReportError{file.errorString(), path};
  const QByteArray bytes = file.read(kMaxDefinitionBytes + 1);
  if (bytes.size() > kMaxDefinitionBytes)
    throw ReportError{QStringLiteral("The report definition is too large."), path};
  const DefinitionXml xml(bytes, path);
  return DefinitionLoader(path).Load(xml.Root());
}

}  // namespace qbx
