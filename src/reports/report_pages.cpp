#include "reports/report_pages.h"

#include <QDataStream>
#include <QIODevice>

namespace qbx {

namespace {

QByteArray Packed(const ReportPage& page) {
  QByteArray bytes;
  QDataStream out(&bytes, QIODevice::WriteOnly);
  out << page.number << page.document << page.key << static_cast<qint32>(page.objects.size());
  for (const PlacedObject& placed : page.objects)
    out << placed.object->id << placed.frame << placed.text << placed.from << placed.to << placed.cut;
  out << static_cast<qint32>(page.drillDowns.size());
  for (const DrillDown& drillDown : page.drillDowns)
    out << drillDown.area << drillDown.group;
  return bytes;
}

ReportPage Unpacked(const QByteArray& bytes, const std::vector<const ReportObject*>& objects) {
  QDataStream in(bytes);
  ReportPage page;
  qint32 count = 0;
  in >> page.number >> page.document >> page.key >> count;
  page.objects.resize(static_cast<size_t>(count));
  for (PlacedObject& placed : page.objects) {
    int id = 0;
    in >> id >> placed.frame >> placed.text >> placed.from >> placed.to >> placed.cut;
    placed.object = objects[static_cast<size_t>(id)];
  }
  in >> count;
  page.drillDowns.resize(static_cast<size_t>(count));
  for (DrillDown& drillDown : page.drillDowns)
    in >> drillDown.area >> drillDown.group;
  return page;
}

}  // namespace

ReportPages::ReportPages(const Report& report, std::unique_ptr<Pager> pager)
    : report_(report), pager_(std::move(pager)) {}

bool ReportPages::LayOutNext() {
  if (complete_) return false;
  if (failure_) std::rethrow_exception(failure_);
  try {
    const std::optional<ReportPage> page = pager_->Next();
    if (page) spool_.Append(Packed(*page));
    complete_ = !page;
  } catch (...) {
    failure_ = std::current_exception();
    throw;
  }
  return !complete_;
}

ReportPage ReportPages::At(int number) {
  return Unpacked(spool_.At(number - 1), report_.Objects());
}

}  // namespace qbx
