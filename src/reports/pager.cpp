#include "reports/pager.h"

#include <algorithm>
#include <utility>

#include "reports/rich_text_slices.h"

namespace qbx {

namespace {

bool IsRichText(const PlacedObject& placed) {
  return std::holds_alternative<RichTextObject>(placed.object->what);
}

bool HasRichText(const ReportBand& band) {
  return std::ranges::any_of(band.objects, &IsRichText);
}

/// Cuts texts that grew beyond a height.
void CutTexts(std::vector<PlacedObject>& objects, qreal height) {
  for (PlacedObject& placed : objects) {
    if (!std::holds_alternative<TextObject>(placed.object->what) || placed.frame.bottom() <= height) continue;
    placed.frame.setBottom(height);
    placed.cut = true;
  }
}

}  // namespace

Pager::Pager(const ReportDefinition& report, ParameterValues parameters, std::unique_ptr<ReportRows> rows,
             RowsReader reader, QStringList group)
    : report_(report),
      parameters_(parameters),
      bands_(report, std::move(parameters), std::move(rows), std::move(reader), std::move(group)),
      holdsBack_(std::ranges::any_of(report.groups, &ReportGroup::restartPages)),
      noTotals_(report) {}

std::optional<ReportPage> Pager::Next() {
  while (done_.empty()) {
    if (ended_) return std::nullopt;
    LayOutPage();
  }
  ReportPage page = std::move(done_.front());
  done_.pop_front();
  return page;
}

void Pager::LayOutPage() {
  if (numbers_.page == 0) band_ = bands_.Next();
  BeginPage();
  while (band_ && PlaceBand()) {
  }
  EndPage();
  if (band_) return;
  FinishGroup();
  ended_ = true;
}

void Pager::BeginPage() {
  page_ = {};
  if (band_) placed_ = {.row = band_->row, .totals = band_->totals};
  if (band_ && band_->beginsGroup) {
    FinishGroup();
    numbers_.groupPage = 0;
    ++numbers_.groupNumber;
    key_ = KeyOf(*band_);
  }
  page_.key = key_;
  page_.number = ++numbers_.page;
  ++numbers_.groupPage;
  page_.document = std::max(1, numbers_.groupNumber);
  PlaceSections(report_.pageHeaders, report_.paper.top);
  const QSizeF sheet = SheetOf(report_.paper);
  y_ = report_.paper.top + HeightOf(report_.pageHeaders);
  bottom_ = sheet.height() - report_.paper.bottom - HeightOf(report_.pageFooters);
  empty_ = true;
}

void Pager::EndPage() {
  PlaceSections(report_.pageFooters, bottom_);
  if (holdsBack_) {
    ofGroup_.push_back(std::move(page_));
  } else {
    done_.push_back(std::move(page_));
  }
}

bool Pager::PlaceBand() {
  if (!empty_ && band_->breakBefore) return false;
  placed_.row = band_->row;
  placed_.totals = band_->totals;
  return HasRichText(*band_) ? PlaceSlice() : PlaceWhole();
}

bool Pager::PlaceWhole() {
  const bool findsRoom = y_ + band_->height <= bottom_ + kLayoutTolerance;
  if (!empty_ && !findsRoom) return false;
  if (!findsRoom && PlacePart(bottom_ - y_)) return false;
  PutOnPage(std::move(band_->objects), y_);
  if (!band_->drillDown.isEmpty()) {
    const ReportPaper& paper = report_.paper;
    const qreal width = SheetOf(paper).width() - paper.left - paper.right;
    page_.drillDowns.push_back({QRectF(paper.left, y_, width, band_->height), band_->drillDown});
  }
  y_ += band_->height;
  empty_ = empty_ && band_->height <= 0;
  const bool goesOn = !band_->breakAfter;
  band_ = bands_.Next();
  return goesOn;
}

bool Pager::PlacePart(qreal room) {
  std::vector<PlacedObject>& objects = band_->objects;
  const auto below = std::stable_partition(objects.begin(), objects.end(),
                                           [room](const PlacedObject& placed) { return placed.frame.top() < room; });
  if (below == objects.end() || below == objects.begin()) {
    CutTexts(objects, room);
    band_->height = room;
    return false;
  }
  std::vector<PlacedObject> rest(std::make_move_iterator(below), std::make_move_iterator(objects.end()));
  objects.erase(below, objects.end());
  CutTexts(objects, room);
  PutOnPage(std::exchange(objects, {}), y_);
  const qreal up =
      std::ranges::min(rest, {}, [](const PlacedObject& placed) { return placed.frame.top(); }).frame.top();
  for (PlacedObject& placed : rest)
    placed.frame.translate(0, -up);
  band_->height -= up;
  objects = std::move(rest);
  return true;
}

bool Pager::PlaceSlice() {
  std::vector<PlacedObject> slice = TakeSlice(*band_, bottom_ - y_);
  if (band_->objects.empty() || (slice.empty() && empty_)) {
    // All of it fits, or it would not fit on any page.
    std::ranges::move(slice, std::back_inserter(band_->objects));
    band_->height = std::min(band_->height, bottom_ - y_);
    return PlaceWhole();
  }
  if (slice.empty()) return false;
  PutOnPage(std::move(slice), y_);
  band_->breakBefore = false;
  band_->beginsGroup = false;
  return false;
}

std::vector<PlacedObject> Pager::TakeSlice(ReportBand& band, qreal room) const {
  qreal taken = 0;  // the height of the slice
  bool whole = true;
  std::vector<PlacedObject> slice;
  std::vector<PlacedObject> rest;
  for (PlacedObject& placed : band.objects) {
    if (!IsRichText(placed)) continue;
    const RichTextCut cut = CutRichText(*placed.document, placed.from, room - placed.frame.top(), empty_);
    whole = whole && cut.whole;
    PlacedObject part = placed;
    part.to = cut.to;
    part.frame.setHeight(cut.to - placed.from);
    taken = std::max(taken, part.frame.bottom());
    if (part.to > part.from) slice.push_back(part);
    if (cut.whole) continue;
    placed.from = cut.to;
    rest.push_back(placed);
  }
  if (slice.empty()) return {};
  for (PlacedObject& placed : band.objects)
    if (!IsRichText(placed)) (whole || placed.frame.top() < taken ? slice : rest).push_back(placed);
  for (PlacedObject& placed : rest) {
    placed.frame.moveTop(std::max<qreal>(0, placed.frame.top() - taken));
    if (IsRichText(placed)) placed.frame.setHeight(placed.to - placed.from);
  }
  band.objects = std::move(rest);
  if (band.objects.empty()) return slice;
  band.height = 0;
  for (const PlacedObject& placed : band.objects)
    band.height = std::max(band.height, placed.frame.bottom());
  return slice;
}

void Pager::PlaceSections(const std::vector<ReportSection>& sections, qreal y) {
  static const ReportRow noRow;
  for (const ReportSection& section : sections) {
    if (!Shows(section)) continue;
    const ReportRow& row = placed_.row ? *placed_.row : noRow;
    const ReportTotals& totals = placed_.totals ? *placed_.totals : noTotals_;
    ReportBand band = MakeBand(section, {report_, parameters_, row, totals, 0, numbers_});
    PutOnPage(std::move(band.objects), y);
    y += section.height;
  }
}

/// The value of the group that counts its pages and begins with this band.
QString Pager::KeyOf(const ReportBand& band) const {
  const auto group = std::ranges::find_if(report_.groups, &ReportGroup::restartPages);
  return group == report_.groups.end() ? QString() : band.row->Field(group->field).ToText();
}

qreal Pager::HeightOf(const std::vector<ReportSection>& sections) const {
  qreal height = 0;
  for (const ReportSection& section : sections)
    if (Shows(section)) height += section.height;
  return height;
}

bool Pager::Shows(const ReportSection& section) const {
  const int number = holdsBack_ ? numbers_.groupPage : numbers_.page;
  return section.pages == OnPages::kAll || (section.pages == OnPages::kFirst) == (number == 1);
}

void Pager::PutOnPage(std::vector<PlacedObject> objects, qreal y) {
  for (PlacedObject& placed : objects) {
    placed.frame.translate(report_.paper.left, y);
    page_.objects.push_back(std::move(placed));
  }
}

void Pager::FinishGroup() {
  const QString pages = QString::number(ofGroup_.size());
  for (ReportPage& page : ofGroup_) {
    for (PlacedObject& placed : page.objects)
      if (!IsRichText(placed)) placed.text.replace(kGroupPagesMark, pages);
    done_.push_back(std::move(page));
  }
  ofGroup_.clear();
}

}  // namespace qbx
