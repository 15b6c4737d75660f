#include "platform/cups_printers.h"

#include <cups/cups.h>
#include <cups/pwg.h>

#include <memory>

namespace qbx {

namespace {

constexpr char kTray[] = "media-source";
constexpr int kConnectTimeout = 5'000;      // milliseconds
constexpr double kStopCheckInterval = 0.1;  // seconds

/// A connection to the print service. It is given up when `stop` is requested.
class Service {
 public:
  explicit Service(const std::stop_token& stop) : stop_(stop) {
    http_.reset(httpConnect2(cupsServer(), ippPort(), nullptr, AF_UNSPEC, cupsEncryption(), /*blocking=*/1,
                             kConnectTimeout, nullptr));
    if (!http_) Fail();
    httpSetTimeout(http_.get(), kStopCheckInterval, &GoesOn, &stop_);
  }

  [[nodiscard]] http_t* Http() const { return http_.get(); }
  /// \throws PrinterError when the connection broke
  void CheckAlive() const {
    if (stop_.stop_requested() || httpError(http_.get()) != 0) Fail();
  }

 private:
  [[noreturn]] static void Fail() {
    throw PrinterError{QStringLiteral("The print service of this computer does not answer.")};
  }
  static int GoesOn(http_t*, void* stop) { return static_cast<std::stop_token*>(stop)->stop_requested() ? 0 : 1; }

  std::stop_token stop_;
  std::unique_ptr<http_t, decltype(&httpClose)> http_{nullptr, &httpClose};
};

/// The destinations of the print service, freed at the end.
class Destinations {
 public:
  /// \throws PrinterError
  explicit Destinations(const Service& service) {
    count_ = cupsGetDests2(service.Http(), &list_);
    if (count_ == 0) service.CheckAlive();
  }
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

/// The standard name of a paper ("iso_a4_210x297mm", PWG 5101.1).
/// \param size  in millimetres
QString PaperName(const QSizeF& size) {
  if (size.isEmpty()) return {};
  const pwg_media_t* media = pwgMediaForSize(qRound(size.width() * 100), qRound(size.height() * 100));
  return media == nullptr ? QString() : QString::fromUtf8(media->pwg);
}

}  // namespace

std::vector<Printer> CupsPrinters::List(const std::stop_token& stop) {
  std::vector<Printer> printers;
  const Service service(stop);
  const Destinations all(service);
  for (const cups_dest_t& printer : all) {
    if (printer.instance != nullptr) continue;  // a second set of options for a printer that is in the list already
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

PrinterAbilities CupsPrinters::AbilitiesOf(const QString& deviceId, const std::stop_token& stop) {
  const Service service(stop);
  Destinations printers(service);
  cups_dest_t* printer = printers.Find(deviceId);
  if (printer == nullptr) return {};
  const std::unique_ptr<cups_dinfo_t, decltype(&cupsFreeDestInfo)> info(cupsCopyDestInfo(service.Http(), printer),
                                                                        &cupsFreeDestInfo);
  if (!info) {
    service.CheckAlive();
    return {};
  }
  return {.bothSides = cupsCheckDestSupported(service.Http(), printer, info.get(), CUPS_SIDES,
                                              CUPS_SIDES_TWO_SIDED_PORTRAIT) != 0,
          .trays = Texts(cupsFindDestSupported(service.Http(), printer, info.get(), kTray))};
}

void CupsPrinters::Print(const QString& deviceId, const PrintJob& job, const std::stop_token& stop) {
  const Service service(stop);
  Options options;
  options.Add(CUPS_COPIES, QString::number(job.copies));
  options.Add(CUPS_SIDES, QString::fromLatin1(job.bothSides ? CUPS_SIDES_TWO_SIDED_PORTRAIT : CUPS_SIDES_ONE_SIDED));
  // Scaling would move the address out of the window of the envelope.
  options.Add("print-scaling", QStringLiteral("none"));
  if (!job.tray.isEmpty()) options.Add(kTray, job.tray);
  if (const QString paper = PaperName(job.paper); !paper.isEmpty()) options.Add(CUPS_MEDIA, paper);
  const int id = cupsPrintFile2(service.Http(), deviceId.toUtf8().constData(), job.file.toUtf8().constData(),
                                job.title.toUtf8().constData(), options.Count(), options.List());
  if (id <= 0) throw PrinterError{QString::fromUtf8(cupsLastErrorString())};
}

}  // namespace qbx
