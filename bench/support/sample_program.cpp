#include "sample_program.h"

#include <QFile>

#include "hostdb/sample_garage.h"
#include "rounds.h"
#include "settings/edition_names.h"

namespace qbx::bench {

SampleProgram::SampleProgram(int customers) {
  const HostDatabaseProblem problem =
      MakeSampleGarage(File(), {.customers = customers, .seed = 1, .asOf = QDate(2026, 6, 1)}, ExistingFile::kReplace);
  if (problem) Fail(problem->toUtf8().constData());
}

void SampleProgram::Start() {
  app_ = std::make_unique<Application>(
      ApplicationSetup{.ui = ui_, .clock = clock_, .folders = FindFolders(folder_.path())});
  const HeadlessStart start{.user = QStringLiteral("Bench"), .databaseName = {}, .instance = {}};
  if (app_->start.RunHeadless(start) != StartOutcome::kRunning || !app_->hostConnection.Connected()) {
    Fail("the program did not start");
  }
  desk_ = std::make_unique<CampaignDesk>(*app_, view_);
}

QString SampleProgram::File() const {
  return folder_.filePath(EditionNamesFor({}, {}, {}).databaseName + QStringLiteral(".db"));
}

QString SampleProgram::CopyForPeer() const {
  const QString copy = folder_.filePath(QStringLiteral("Peer.copy"));
  if (!QFile::copy(File(), copy)) Fail("the database could not be copied");
  return copy;
}

}  // namespace qbx::bench
