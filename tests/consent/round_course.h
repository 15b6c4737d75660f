// The course of a round in the process; see round.h.

#pragma once

#include "consent/desk_user.h"
#include "consent/garage_folder.h"
#include "consent/host_program.h"
#include "consent/letter_ledger.h"
#include "consent/make_world.h"
#include "consent/round.h"
#include "consent/stored_rows.h"
#include "consent/weather.h"

namespace qbx::consent {

inline constexpr char kComputer[] = "WORKSHOP-PC";
inline constexpr char kOtherComputer[] = "OFFICE-PC";

/// Seconds after which a claim of another computer is void.
inline constexpr int kLongSilence = (CampaignClaim::kSilence + 1) * 60;

/// Where a process can end while its letters are shown.
enum class LetterMoment { kLookedAt, kAnnounced, kPrinted, kMarked, kNever };

/// What the user does with the letters that he makes.
struct LetterPlan {
  bool wild = false;  ///< something disturbs the run
  bool again = false;
  bool saved = false;                ///< to a file, without a preview
  int printed = LetterLedger::kAll;  ///< letters
  bool marksByHand = false;          ///< prints elsewhere, and marks the letters when the preview closes
  LetterMoment dies = LetterMoment::kNever;
  bool renewalFails = false;  ///< the first renewal of the claim after a long silence
};

/// Two users, PAT and JO, on one database. PAT does the steps and sends. JO sets flags, tries to send, or takes over.
class Round {
 public:
  Round(const RoundWishes& wishes, int number, Story& story)
      : story_(story),
        seed_(RoundSeed(wishes.seed, number)),
        random_(seed_, 100),
        world_(MakeGarage(wishes)),
        ledger_(world_, story, around_.clock),
        letters_(ledger_, world_, story, around_.clock),
        gateway_(ledger_, seed_),
        mail_(ledger_, seed_),
        host_(world_, ledger_, story, served_.Connect(), seed_) {
    around_.gateway = &gateway_;
    around_.mail = &mail_;
    served_.Fill();
    StoreWorld(world_, {}, host_.Database());
  }

  RoundCounts Play() {
    StartUser();
    if (SelectRows() && PrepareRows()) {
      for (int runs = random_.Between(1, 3); runs > 0 && !story_.Failed(); --runs) {
        if (random_.Chance(45)) MakeLetters(true);
        if (!story_.Failed()) DisturbedRun();
        BetweenRuns();
      }
      LastRuns();
    }
    counts_.arrived = ledger_.Arrived();
    counts_.letters = letters_.Count();
    return counts_;
  }

 private:
  World MakeGarage(const RoundWishes& wishes) {
    RandomSource random(seed_, 1);
    return MakeWorld(random, wishes.customers > 0 ? wishes.customers : random.Between(3, 70));
  }

  // The two users.
  void StartUser();
  DeskUser& Other();
  void Restart();

  // Steps 1 to 4.
  void RefuseOptedOut();
  bool SelectRows();
  bool PrepareRows();
  void Click(DeskUser& user);
  void Between(int percent);
  void LongSilence();
  bool Compare(bool filtered, const QString& step);
  bool CompareLosses(bool startCounted, bool filtered);
  bool Dies(int calls, const std::function<void()>& step);
  void DieInQuery();
  void DieInMethods(const SendMethods& methods);

  // Changes of many rows, and undoing the last one.
  struct ChangedRow {
    Row before;
    std::optional<StoredRow> after = {};  ///< nothing: it was taken out
  };
  struct LastChange {
    qint64 run = 0;  ///< the number of runs before
    std::vector<ChangedRow> rows = {};
  };
  void ChangeMany();
  void TickMany(Channel channel, bool ticked);
  void TakeManyOut();
  void UndoLast();
  void CheckRows();
  void Changes(const std::vector<qint64>& records, const std::function<void()>& change);
  [[nodiscard]] std::vector<qint64> SomeRows();

  // Sending.
  void DisturbedRun();
  void BetweenRuns();
  void SelectAgain();
  void LastRuns();
  void SettleDoubts();
  void SettleOne(const StoredRow& stored, bool arrived);
  void Reopen(Row& row);

  // Letters.
  void MakeLetters(bool wild);
  [[nodiscard]] LetterPlan PlanLetters(bool wild);
  [[nodiscard]] TakenOut LookAtLetters(const ReportRun& run);
  [[nodiscard]] bool Announce(ReportFollower& follower, const TakenOut& taken);
  void OtherWantsLetters();
  void OtherMakesLetters();
  void DiesAt(LetterMoment moment);

  MailshotSummary Run(DeskUser& user, const std::vector<Watch::Disturbance>& disturbances);
  [[nodiscard]] std::vector<Watch::Disturbance> MakeDisturbances();
  [[nodiscard]] std::function<void()> MakeAction(MailshotPoint point);
  void OtherMeddles();
  void OtherTakesOver(bool onItsWay);

  Story& story_;
  quint64 seed_;
  RandomSource random_;
  GarageFolder folder_;
  Surroundings around_{.folder = folder_.Path()};
  test::ServedFolder served_{folder_.Path(), around_.clock};
  World world_;
  Ledger ledger_;
  LetterLedger letters_;
  FakeGateway gateway_;
  FakeMail mail_;
  HostProgram host_;
  Settings seen_;  ///< the options as the first user's program knows them
  QueryPlan plan_;
  std::unique_ptr<DeskUser> user_;
  std::unique_ptr<DeskUser> other_;
  Watch* watch_ = nullptr;
  Mailshot* run_ = nullptr;
  LetterPlan letterPlan_;
  bool lettersPrinted_ = false;  ///< the printer got the letters that were last announced for it
  int files_ = 0;
  bool takenOver_ = false;  ///< the present run lost its claim to another computer
  QDate today_;             ///< when the present run began
  int campaign_ = 0;
  bool saved_ = false;
  std::optional<LastChange> last_;  ///< of the first user
  bool restarted_ = false;          ///< the program was restarted, so step 2 shows nothing
  RoundCounts counts_;
};

}  // namespace qbx::consent
