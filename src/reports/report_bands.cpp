#include "reports/report_bands.h"

#include <algorithm>
#include <queue>
#include <utility>

#include "reports/rich_text_slices.h"
#include "reports/text_fit.h"
#include "util/text.h"

namespace qbx {

namespace {

PlacedObject PlaceText(const TextObject& text, PlacedObject placed, const ReportValues& values) {
  placed.text = values.Text(text);
  if (text.closeBlanks) placed.text = WithoutBlankLines(placed.text);
  if (!text.canGrow && text.shrinkTo <= 0) return placed;
  const FittedText fitted = FitText(placed.text, text, placed.frame.size());
  placed.frame.setHeight(std::max(placed.frame.height(), fitted.height));
  placed.cut = !fitted.fits;
  return placed;
}

PlacedObject PlaceRichText(const RichTextObject& richText, PlacedObject placed, const ReportValues& values) {
  placed.text = values.row.Field(richText.field).ToText();
  placed.document = LayOutRichText(placed.text, placed.frame.width());
  placed.to = placed.document->size().height();
  placed.frame.setHeight(std::max(placed.frame.height(), placed.to));
  return placed;
}

/// Moves objects down to make room for the ones above that grew.
void MakeRoom(std::vector<PlacedObject>& objects) {
  std::ranges::stable_sort(objects, {}, [](const PlacedObject& placed) { return placed.object->frame.top(); });
  // Lower edges of the objects above, as designed, and how far each moved; the uppermost first.
  using Edge = std::pair<qreal, qreal>;
  std::priority_queue<Edge, std::vector<Edge>, std::greater<>> edges;
  qreal down = 0;
  for (PlacedObject& placed : objects) {
    const QRectF& designed = placed.object->frame;
    for (; !edges.empty() && edges.top().first <= designed.top(); edges.pop())
      down = std::max(down, edges.top().second);
    placed.frame.translate(0, down);
    edges.emplace(designed.bottom(), placed.frame.bottom() - designed.bottom());
  }
}

}  // namespace

ReportBand MakeBand(const ReportSection& section, const ReportValues& values) {
  ReportBand band{.height = section.height, .breakBefore = section.breakBefore, .breakAfter = section.breakAfter};
  bool grows = false;
  for (const ReportObject& object : section.objects) {
    PlacedObject placed{.object = &object, .frame = object.frame};
    if (const auto* text = std::get_if<TextObject>(&object.what)) placed = PlaceText(*text, placed, values);
    if (const auto* rich = std::get_if<RichTextObject>(&object.what)) placed = PlaceRichText(*rich, placed, values);
    grows = grows || placed.frame.height() > object.frame.height();
    band.objects.push_back(std::move(placed));
  }
  if (grows) MakeRoom(band.objects);
  for (const PlacedObject& placed : band.objects)
    band.height = std::max(band.height, placed.frame.bottom());
  return band;
}

BandSource::BandSource(const ReportDefinition& report, ParameterValues parameters, std::unique_ptr<ReportRows> rows,
                       RowsReader reader, QStringList group)
    : report_(report),
      parameters_(std::move(parameters)),
      rows_(std::move(rows)),
      reader_(std::move(reader)),
      group_(std::move(group)),
      firstShown_(group_.isEmpty() ? 0 : static_cast<size_t>(group_.size()) - 1),
      hiding_(static_cast<size_t>(group_.size())),
      totals_(report) {
  while (hiding_ < report_.groups.size() && !report_.groups[hiding_].drillDown)
    ++hiding_;
  if (rows_) columns_ = std::make_shared<ColumnNames>(rows_->Columns());
}

BandSource::~BandSource() = default;

std::optional<ReportBand> BandSource::Next() {
  for (;;) {
    if (auto band = NextOfSubreport()) return band;
    if (ready_.empty()) {
      if (ended_) return std::nullopt;
      Advance();
      continue;
    }
    auto first = std::move(ready_.front());
    ready_.pop_front();
    if (auto* band = std::get_if<ReportBand>(&first)) return std::move(*band);
    StartSubreport(std::get<WaitingSubreport>(first));
  }
}

void BandSource::StartSubreport(const WaitingSubreport& waiting) {
  const ReportDefinition& inner = *waiting.object->definition;
  ParameterValues parameters = parameters_;
  for (const SubreportObject::Link& link : waiting.object->links)
    parameters.insert(link.parameter, waiting.row->Field(link.field));
  auto rows = reader_(*inner.source, inner, parameters);
  subreport_ = std::make_unique<BandSource>(inner, std::move(parameters), std::move(rows), reader_);
}

std::optional<ReportBand> BandSource::NextOfSubreport() {
  if (!subreport_) return std::nullopt;
  std::optional<ReportBand> band = subreport_->Next();
  if (!band) {
    subreport_.reset();
    return std::nullopt;
  }
  band->row = row_;  // headers and footers of pages show the row around it
  band->totals = std::make_shared<ReportTotals>(totals_);
  return band;
}

/// Makes the bands of the next row, or of the end of the report.
void BandSource::Advance() {
  if (!begun_) return Begin();
  const size_t changed = FirstChangedGroup();
  CloseGroups(changed);
  if (!next_) return End();
  row_ = std::exchange(next_, ReadRow());
  OpenGroups(changed);
  AddDetails();
}

void BandSource::Begin() {
  begun_ = true;
  row_ = ReadRow();
  const bool anyRow = row_ != nullptr;
  if (!anyRow) row_ = std::make_shared<ReportRow>();
  if (report_.reportHeader && group_.isEmpty()) Add(*report_.reportHeader, 0);
  if (!anyRow) return End();
  next_ = ReadRow();
  OpenGroups(0);
  AddDetails();
}

void BandSource::End() {
  ended_ = true;
  if (report_.reportFooter && group_.isEmpty()) Add(*report_.reportFooter, 0);
}

BandSource::Row BandSource::ReadRow() {
  while (rows_ && rows_->Next()) {
    auto row = std::make_shared<ReportRow>();
    row->columns = columns_;
    const auto count = static_cast<int>(rows_->Columns().size());
    row->values.reserve(rows_->Columns().size());
    for (int i = 0; i < count; ++i)
      row->values.push_back(rows_->At(i));
    if (group_.isEmpty() || GroupsOf(*row, group_.size()) == group_) return row;
  }
  return nullptr;
}

/// The outermost group whose value changes with the next row; the number of groups when none changes.
size_t BandSource::FirstChangedGroup() const {
  for (size_t i = 0; i < report_.groups.size(); ++i) {
    const QString& field = report_.groups[i].field;
    if (!next_ || !(next_->Field(field) == row_->Field(field))) return i;
  }
  return report_.groups.size();
}

void BandSource::CloseGroups(size_t from) {
  for (size_t i = report_.groups.size(); i > from; --i)
    if (report_.groups[i - 1].footer && Shows(i - 1))
      Add(*report_.groups[i - 1].footer, i, {.drillDown = DrillDownOf(i - 1)});
}

void BandSource::OpenGroups(size_t from) {
  for (size_t i = from; i < report_.groups.size(); ++i)
    totals_.Restart(i + 1);
  totals_.Add(*row_);
  static const ReportSection nothing;
  for (size_t i = from; i < report_.groups.size(); ++i) {
    const ReportGroup& group = report_.groups[i];
    if (!Shows(i)) continue;
    const ReportBand flags{
        .breakBefore = group.newPage, .beginsGroup = group.restartPages, .drillDown = DrillDownOf(i)};
    if (group.header || group.newPage) Add(group.header ? *group.header : nothing, i + 1, flags);
  }
}

/// The values of the `count` outermost groups.
QStringList BandSource::GroupsOf(const ReportRow& row, qsizetype count) const {
  QStringList values;
  for (qsizetype i = 0; i < count; ++i)
    values += row.Field(report_.groups[static_cast<size_t>(i)].field).ToText();
  return values;
}

QStringList BandSource::DrillDownOf(size_t group) const {
  return group == hiding_ ? GroupsOf(*row_, static_cast<qsizetype>(group) + 1) : QStringList();
}

void BandSource::AddDetails() {
  if (hiding_ < report_.groups.size()) return;
  for (const ReportSection& detail : report_.details)
    Add(detail, 0);
}

void BandSource::Add(const ReportSection& section, size_t level, const ReportBand& flags) {
  if (!section.objects.empty())
    if (const auto* subreport = std::get_if<SubreportObject>(&section.objects.front().what)) {
      ready_.push_back(WaitingSubreport{subreport, row_});
      return;
    }
  ReportBand band = MakeBand(section, {report_, parameters_, *row_, totals_, level});
  band.breakBefore = band.breakBefore || flags.breakBefore;
  band.beginsGroup = flags.beginsGroup;
  band.drillDown = flags.drillDown;
  band.row = row_;
  band.totals = std::make_shared<ReportTotals>(totals_);
  ready_.push_back(std::move(band));
}

}  // namespace qbx
