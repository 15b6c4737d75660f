#include "printing/print_service.h"

#include <chrono>
#include <future>

#include "database/pump_interval.h"
#include "diagnostics/wait_box.h"

namespace qbx {

namespace {

using std::chrono::seconds;

constexpr seconds kAnswerTimeout(20);
constexpr seconds kPrintTimeout(180);  // a file of thousands of letters has some ten megabytes

struct NoAnswer : PlainReportError {};

}  // namespace

/// \return nothing when the user pressed Cancel
template <typename Answer>
std::optional<Answer> PrintService::Ask(const QString& text, seconds limit,
                                        std::function<Answer(const std::stop_token&)> call) {
  std::packaged_task<Answer(std::stop_token)> task(std::move(call));
  std::future<Answer> answer = task.get_future();
  std::jthread worker(std::move(task));
  WaitBox box(diagnostics_, text);
  const auto end = std::chrono::steady_clock::now() + limit;
  while (answer.wait_for(kPumpInterval) != std::future_status::ready) {
    const bool late = std::chrono::steady_clock::now() > end;
    if (box.GoOn() && !late) continue;
    worker.request_stop();
    givenUp_.push_back(std::move(worker));
    if (!late) return std::nullopt;
    throw NoAnswer{{{QStringLiteral("The print service of this computer does not answer.")}}};
  }
  try {
    return answer.get();
  } catch (const PrinterError& error) {
    throw PlainReportError{{error.text}};
  }
}

std::optional<std::vector<Printer>> PrintService::List() {
  return Ask<std::vector<Printer>>(QStringLiteral("Looking for printers"), kAnswerTimeout,
                                   [this](const std::stop_token& stop) { return printers_.List(stop); });
}

std::optional<PrinterAbilities> PrintService::AbilitiesOf(const QString& deviceId) {
  return Ask<PrinterAbilities>(
      QStringLiteral("Asking the printer what it can do"), kAnswerTimeout,
      [this, deviceId](const std::stop_token& stop) { return printers_.AbilitiesOf(deviceId, stop); });
}

void PrintService::Print(const Printer& printer, const PrintJob& job) {
  try {
    if (Ask<bool>(QStringLiteral("Handing the report to the printer"), kPrintTimeout,
                  [this, deviceId = printer.deviceId, job](const std::stop_token& stop) {
                    printers_.Print(deviceId, job, stop);
                    return true;
                  }))
      return;
  } catch (const NoAnswer&) {
    // Treated like a cancelled call.
  } catch (const PlainReportError& error) {
    throw PlainReportError{
        {QStringLiteral("The printer \"%1\" did not take the report: %2").arg(printer.name, error.text)}};
  }
  throw PrintingUnknown{
      {QStringLiteral(
           "It is not known whether the printer \"%1\" has the report. Look at its queue before you print again.")
           .arg(printer.name)}};
}

}  // namespace qbx
