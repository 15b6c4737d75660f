#include "consent/stored_rows.h"

#include <algorithm>
#include <map>

#include "consent/host_statement.h"

namespace qbx::consent {
namespace {

constexpr char kRows[] =
    "SELECT r.RecordID, r.Customer, r.Vehicle, r.Send_SMS, r.Send_Email, r.Send_Letter, r.Processed, "
    "(SELECT State FROM Send_Journal j WHERE j.RecordID = r.RecordID AND Channel = 1), "
    "(SELECT State FROM Send_Journal j WHERE j.RecordID = r.RecordID AND Channel = 2), "
    "(SELECT State FROM Send_Journal j WHERE j.RecordID = r.RecordID AND Channel = 3), "
    "(SELECT Reason FROM Send_Journal j WHERE j.RecordID = r.RecordID AND Channel = 3 AND State = 0) "
    "FROM [Campaign Results] r WHERE CampaignID = ?";

JournalState StateAt(const Recordset& rows, int column) {
  const Value state = rows.Field(column);
  return state.IsNull() ? JournalState::kNone : static_cast<JournalState>(state.ToInt());
}

QString Flags(bool sms, bool mail, bool letter) {
  return QStringLiteral("text %1, e-mail %2, letter %3").arg(sms).arg(mail).arg(letter);
}

}  // namespace

std::vector<StoredRow> ReadRows(Session& database, int campaign) {
  std::vector<StoredRow> rows;
  for (Recordset found = (HostStatement(database, kRows) << Number(campaign)).Run(); !found.Eof(); found.MoveNext()) {
    StoredRow row;
    row.record = found.Field(0).ToInt();
    row.customer = static_cast<int>(found.Field(1).ToInt());
    row.vehicle = found.Field(2).ToText();
    row.sms = found.Field(3).ToBool();
    row.mail = found.Field(4).ToBool();
    row.letter = found.Field(5).ToBool();
    row.processed = found.Field(6).ToBool();
    row.journal = {StateAt(found, 7), StateAt(found, 8), StateAt(found, 9)};
    row.letterPlace = found.Field(10).ToText();
    rows.push_back(row);
  }
  return rows;
}

std::vector<Row> CompareSelection(const std::vector<StoredRow>& stored, const std::vector<Picked>& picked,
                                  const QString& step, Story& story) {
  std::map<std::pair<int, QString>, qint64> keys;
  for (const StoredRow& row : stored) {
    if (!keys.emplace(std::pair(row.customer, row.vehicle), row.record).second)
      story.Fault(step + QStringLiteral(" gave customer %1 %2 twice").arg(row.customer).arg(row.vehicle));
    if (row.sms || row.mail || row.letter || row.processed)
      story.Fault(step + QStringLiteral(" gave row %1 with a flag").arg(row.record));
  }
  std::vector<Row> rows;
  for (const Picked& one : picked) {
    Row row = MakeRow(one);
    const auto found = keys.find(std::pair(row.customer, row.vehicle));
    if (found == keys.end()) {
      story.Fault(step + QStringLiteral(" left out ") + row.Name());
      continue;
    }
    row.record = found->second;
    keys.erase(found);
    rows.push_back(std::move(row));
  }
  for (const auto& [key, record] : keys)
    story.Fault(step + QStringLiteral(" gave customer %1 %2, who MAY NOT BE CONTACTED or does not fit")
                           .arg(key.first)
                           .arg(key.second));
  return rows;
}

bool SameRows(const std::vector<StoredRow>& stored, const std::vector<Picked>& picked) {
  Story nobody;
  (void)CompareSelection(stored, picked, {}, nobody);
  return !nobody.Failed();
}

bool SameFlags(const std::vector<StoredRow>& stored, const std::vector<Row>& rows) {
  QHash<qint64, const Row*> byRecord;
  for (const Row& row : rows)
    byRecord[row.record] = &row;
  return std::all_of(stored.begin(), stored.end(), [&](const StoredRow& now) {
    const Row* row = byRecord.value(now.record);
    return row != nullptr && now.sms == row->sms.wanted && now.mail == row->mail.wanted && now.letter == row->letter;
  });
}

void CompareFlags(const std::vector<StoredRow>& stored, Ledger& ledger, Story& story) {
  for (const StoredRow& now : stored) {
    const Row* row = ledger.Find(now.record);
    if (row == nullptr) {
      story.Fault(QStringLiteral("row %1 is new").arg(now.record));
      continue;
    }
    const QString is = Flags(now.sms, now.mail, now.letter);
    const QString mustBe = Flags(row->sms.wanted, row->mail.wanted, row->letter);
    if (is != mustBe)
      story.Fault(row->Name() + QStringLiteral(" has the flags ") + is + QStringLiteral("; they must be ") + mustBe);
  }
}

}  // namespace qbx::consent
