// Runs a mailshot and lets its own process die at a chosen step.
//
//   mailshot_crash FOLDER HTTP-PORT SMTP-PORT POINT NTH
//
// FOLDER holds the host database; the process is killed the NTH time the run comes to POINT, a MailshotPoint as a number. NTH 0: never.
// Ends with 0 when the run came to its end or had nothing left to do, else with 1.

#include <QCoreApplication>
#include <csignal>

#include "../sending_desk.h"
#include "platform/system_host_info.h"

namespace {

using namespace qbx;

class KillAt final : public MailshotObserver {
 public:
  KillAt(MailshotPoint point, int nth) : point_(point), left_(nth) {}
  void At(MailshotPoint point, qint64) override {
    if (point == point_ && left_ > 0 && --left_ == 0) std::raise(SIGKILL);
  }

 private:
  MailshotPoint point_;
  int left_;
};

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  const QStringList arguments = application.arguments();
  if (arguments.size() != 6) return 2;
  const SystemHostInfo computer;
  test::SendingDesk desk(arguments[2].toInt(), arguments[3].toInt(), computer, arguments[1]);
  desk.host.ui.OnMessage([](const Message&) { return MessageAnswer::kYes; });
  KillAt observer(static_cast<MailshotPoint>(arguments[4].toInt()), arguments[5].toInt());
  const MailshotSummary summary = desk.MakeMailshot(observer).Send(test::kCampaign, desk.templates);
  return summary.end == MailshotEnd::kFinished || summary.end == MailshotEnd::kNothingLeft ? 0 : 1;
}
