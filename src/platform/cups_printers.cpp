#include "platform/cups_printers.h"

#include <cups/cups.h>

#include <memory>

namespace qbx {

namespace {

constexpr char kTray[] = "media-source";

/// The destinations of the print service, freed at the end.
class Destinations {
 public:
  Destinations() { count_ = cupsGetDests2(CUPS_HTTP_DEFAULT, &list_); }
  ~Destinations() { cupsFreeDests(count_, list_); }
  Destinations(const Destinations&) = delete;
  Destinations& operator=(const Destinations&) = delete;

  [[nodiscard]] const cups_dest_t* begin() const { return list_; }
  [[nodiscard]] const cups_dest_t* end() const { return list_ + count_; }
  /// Null when there is none.
  [[nodiscard]] cups_dest_t* Find(const QString& name) {
    return cupsGetDest(name.toUtf8().constData(), nullptr, count_, list_);
  }

 private:
  cups_dest_t* list_ = nullptr;
  int count_ = 0;
};

QString Option(const cups_dest_t& printer, const char* name) {
  return QString::fromUtf8(cupsGetOption(name, printer.num_options, printer.options));
}

QStringList Texts(ipp_attribute_t* attribute) {
  QStringList texts;
  for (int i = 0; attribute != nullptr && i < ippGetCount(attribute); ++i)
    texts += QString::fromUtf8(ippGetString(attribute, i, nullptr));
  return texts;
}

/// The options of a job.
class Options {
 public:
  ~Options() { cupsFreeOptions(count_, list_); }
  void Add(const char* name, const QString& value) {
    count_ = cupsAddOption(name, value.toUtf8().constData(), count_, &list_);
  }
  [[nodiscard]] int Count() const { return count_; }
  [[nodiscard]] cups_option_t* List() const { return list_; }

 private:
  cups_option_t* list_ = nullptr;
  int count_ = 0;
};

}  // namespace

std::vector<Printer> CupsPrinters::List() {
  std::vector<Printer> printers;
  const Destinations all;
  for (const cups_dest_t& printer : all) {
    if (printer.instance != nullptr) continue;  // a set of options for a printer that is in the list already
    const QString info = Option(printer, "printer-info");
    const QString deviceId = QString::fromUtf8(printer.name);
    printers.push_back({.deviceId = deviceId,
                        .name = info.isEmpty() ? deviceId : info,
                        .driver = Option(printer, "printer-make-and-model"),
                        .port = Option(printer, "device-uri"),
                        .isDefault = printer.is_default != 0});
  }
  return printers;
}

PrinterAbilities CupsPrinters::AbilitiesOf(const QString& deviceId) {
  Destinations printers;
  cups_dest_t* printer = printers.Find(deviceId);
  if (printer == nullptr) return {};
  const std::unique_ptr<cups_dinfo_t, decltype(&cupsFreeDestInfo)> info(cupsCopyDestInfo(CUPS_HTTP_DEFAULT, printer),
                                                                        &cupsFreeDestInfo);
  if (!info) return {};
  return {.bothSides = cupsCheckDestSupported(CUPS_HTTP_DEFAULT, printer, info.get(), CUPS_SIDES,
                                              CUPS_SIDES_TWO_SIDED_PORTRAIT) != 0,
          .trays = Texts(cupsFindDestSupported(CUPS_HTTP_DEFAULT, printer, info.get(), kTray))};
}

QString CupsPrinters::Print(const QString& deviceId, const PrintJob& job) {
  Options options;
  options.Add(CUPS_COPIES, QString::number(job.copies));
  options.Add(CUPS_SIDES, QString::fromLatin1(job.bothSides ? CUPS_SIDES_TWO_SIDED_PORTRAIT : CUPS_SIDES_ONE_SIDED));
  if (!job.tray.isEmpty()) options.Add(kTray, job.tray);
  const int id = cupsPrintFile2(CUPS_HTTP_DEFAULT, deviceId.toUtf8().constData(), job.file.toUtf8().constData(),
                                job.title.toUtf8().constData(), options.Count(), options.List());
  return id > 0 ? QString() : QString::fromUtf8(cupsLastErrorString());
}

}  // namespace qbx
