#include "campaigns/campaign_storage.h"

#include <algorithm>
#include <limits>
#include <variant>

#include "campaigns/stored_fields.h"

namespace qbx {
namespace {

int ToLong(const Value& value) {
  using Limits = std::numeric_limits<int>;
  return static_cast<int>(std::clamp<qint64>(value.ToInt(), Limits::min(), Limits::max()));
}

void Assign(int& field, const Value& value) {
  field = ToLong(value);
}
void Assign(bool& field, const Value& value) {
  field = value.ToBool();
}
void Assign(QDateTime& field, const Value& value) {
  field = value.ToDateTime();
}
void Assign(QString& field, const Value& value) {
  field = value.ToText();
}

Value ToValue(const QDateTime& date) {
  return date.isValid() ? Value(date) : Value::Null();
}
template <typename T>
Value ToValue(const T& field) {
  return Value(field);
}

void SetStoredFields(Command& command, const CampaignRecord& record) {
  for (const StoredField& field : StoredFields()) {
    const Value value = std::visit([&](auto member) { return ToValue(record.*member); }, field.member);
    command.SetParameter(u'@' + QString::fromLatin1(field.name), value);
  }
}

CampaignRecord ReadRecord(const Recordset& row) {
  CampaignRecord record;
  record.ID = ToLong(row.Field(QStringLiteral("ID")));
  for (const StoredField& field : StoredFields()) {
    const Value value = row.Field(QString::fromLatin1(field.name));
    std::visit([&](auto member) { Assign(record.*member, value); }, field.member);
  }
  return record;
}

/// Shows the hourglass as long as it lives.
class Hourglass {
 public:
  explicit Hourglass(UserInterface& ui) : ui_(ui) { ui_.SetBusy(true); }
  ~Hourglass() { ui_.SetBusy(false); }
  Hourglass(const Hourglass&) = delete;
  Hourglass& operator=(const Hourglass&) = delete;

 private:
  UserInterface& ui_;
};

}  // namespace

CampaignStorage::CampaignStorage(Statements& statements, EventLog& events, EventContext& context,
                                 Diagnostics diagnostics, CurrentCampaign& current, DeletionGuard deletionGuard)
    : statements_(statements),
      events_(events),
      context_(context),
      diagnostics_(diagnostics),
      current_(current),
      deletionGuard_(std::move(deletionGuard)) {}

void CampaignStorage::InitialiseCampaign() {
  const QDateTime now = diagnostics_.clock.Now();
  current_.record = CampaignRecord{};
  current_.record.Date1 = now.date().addMonths(-12).startOfDay();
  current_.record.Date2 = now;
  SetId(statements_.GetNextKeyID(QStringLiteral("TEMP")));
}

bool CampaignStorage::EnsureId() {
  if (current_.record.ID != 0 || !statements_.Shared().WasOpen()) return true;
  SetId(statements_.GetNextKeyID(QStringLiteral("TEMP")));
  return current_.record.ID != 0;
}

bool CampaignStorage::SaveCampaign() {
  return Call("SaveCampaign", "proc_addp_Marketing_Campaign", [this](Command& command) {
    SetStoredFields(command, current_.record);
    SetUser(command);
    const Recordset row = Recordset::ReadAll(command.Open());
    const int id = row.Eof() ? 0 : ToLong(row.Field(0));
    if (id < 1) throw DatabaseError(0, QStringLiteral("The database gave the new campaign no number."), {});
    SetId(id);
    current_.CampaignChanged = false;
  });
}

bool CampaignStorage::UpdateCampaign() {
  return Call("UpdateCampaign", "proc_updp_Marketing_Campaign", [this](Command& command) {
    command.SetParameter(QStringLiteral("@CampaignID"), current_.record.ID);
    SetStoredFields(command, current_.record);
    SetUser(command);
    command.Execute();
    current_.CampaignChanged = false;
  });
}

bool CampaignStorage::UpdateCampaignDetails(int campaignId, const QString& name, const QString& description) {
  return Call("UpdateCampaignDetails", "proc_updp_Marketing_Campaign_Details", [&](Command& command) {
    command.SetParameter(QStringLiteral("@CampaignID"), campaignId);
    command.SetParameter(QStringLiteral("@Campaign_Name"), name);
    command.SetParameter(QStringLiteral("@Campaign_Description"), description);
    SetUser(command);
    command.Execute();
  });
}

bool CampaignStorage::LoadCampaign(int campaignId) {
  events_.LogEvent(kEventMarketing, 0, QString::fromLatin1(kMarketingKey),
                   QStringLiteral("Load Campaign: ") + QString::number(campaignId));
  const Hourglass hourglass(diagnostics_.ui);
  bool found = false;
  const bool ran = Call("LoadCampaign", "proc_selp_Marketing_Campaign", [&](Command& command) {
    command.SetParameter(QStringLiteral("@CampaignID"), campaignId);
    const Recordset row = Recordset::ReadAll(command.Open());
    if (row.Eof()) return;
    found = true;
    current_.record = ReadRecord(row);
    SetId(current_.record.ID);
  });
  if (ran && !found) {
    diagnostics_.ui.ShowMessage({.text = QStringLiteral("Campaign not found!"),
                                 .icon = MessageIcon::kExclamation,
                                 .reason = Reason::kUnknownCampaign});
  }
  return found;
}

int CampaignStorage::CopyCampaign(int campaignId, const QString& newName) {
  int copy = 0;
  Call("CopyCampaign", "proc_copy_Marketing_Campaign", [&](Command& command) {
    command.SetParameter(QStringLiteral("@CampaignID"), campaignId);
    command.SetParameter(QStringLiteral("@Campaign_Name"), newName);
    SetUser(command);
    const Recordset row = Recordset::ReadAll(command.Open());
    if (!row.Eof()) copy = ToLong(row.Field(0));
  });
  return copy;
}

bool CampaignStorage::DeleteCampaign(int campaignId) {
  std::optional<Message> refusal;
  const bool ran = Call("DeleteCampaign", "proc_delp_Marketing_Campaign", [&](Command& command) {
    // The transaction holds the write lock from its start, so no run can claim the campaign meanwhile.
    Transaction transaction(statements_.Shared());
    if (deletionGuard_) refusal = deletionGuard_(campaignId);
    if (refusal) return;
    command.SetParameter(QStringLiteral("@CampaignID"), campaignId);
    SetUser(command);
    command.Execute();
    transaction.Commit();
  });
  if (refusal) diagnostics_.ui.ShowMessage(*refusal);
  return ran && !refusal;
}

bool CampaignStorage::Call(const char* routine, const char* procedure, const std::function<void(Command&)>& run) {
  try {
    statements_.Shared().ReopenIfLost();
    // Throws the right error for a closed connection; preparing a command would only say that it has no parameters.
    (void)statements_.Shared().Driver();
    Command command;
    statements_.PrepareCommand(command, QString::fromLatin1(procedure));
    run(command);
    return true;
  } catch (const DatabaseError& error) {
    statements_.ShowFailure(0, QString::fromLatin1(routine), error);
    return false;
  }
}

void CampaignStorage::SetUser(Command& command) const {
  command.SetParameter(QStringLiteral("@UserID"), context_.user);
}

void CampaignStorage::SetId(int id) {
  current_.record.ID = id;
  context_.campaignId = id;
}

}  // namespace qbx
