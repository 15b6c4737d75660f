#include "wizard/campaign_settings.h"

#include <algorithm>
#include <limits>

#include "database/list_query.h"
#include "queries/filter_table.h"
#include "queries/plain_messages.h"
#include "queries/query_catalogue.h"
#include "util/text.h"
#include "util/typed_number.h"
#include "wizard/campaign_texts.h"

namespace qbx {

namespace {

/// The number at the start of the text, for a stored 32-bit field.
int StoredNumber(const QString& text) {
  return static_cast<int>(std::clamp<qint64>(LeadingInteger(JoinDigitGroups(text)), std::numeric_limits<int>::min(),
                                             std::numeric_limits<int>::max()));
}

/// Copies the date of a control; the stored time stays when the day is the same.
void CopyDate(const QDate& date, QDateTime& field) {
  if (date.isValid() && field.date() != date) field = date.startOfDay();
}

void CopyStoredDate(const QDateTime& stored, QDate& date) {
  if (stored.isValid() && stored.date().year() >= kEarliestStoredYear) date = stored.date();
}

QString RenumberingOfRows(int from, int to) {
  return QStringLiteral("UPDATE [Campaign Results] SET CampaignID = %1 WHERE CampaignID = %2").arg(to).arg(from);
}

QString DeletionOfRows(int campaignId) {
  return QStringLiteral("DELETE FROM [Campaign Results] WHERE CampaignID = %1").arg(campaignId);
}

void CopyRowFromRecord(const FilterRow& row, const CampaignRecord& record, Filters& filters) {
  filters.chkFilter[row.index] = row.IsStored() && record.*row.use;
  if (row.text != nullptr) filters.*row.text = row.IsStored() ? record.*row.values[0] : QString();
  if (row.numbers != nullptr && row.IsStored()) filters.*row.numbers = {record.*row.values[0], record.*row.values[1]};
}

void CopyFilters(const CampaignRecord& record, Filters& filters, std::vector<int>& outOfRange) {
  filters.chkIncludeOptedOut = false;
  for (const FilterRow& row : FilterRows()) {
    CopyRowFromRecord(row, record, filters);
    if (row.when == nullptr) continue;
    const int position = record.*row.when;
    const bool exists = position == -1 || ConditionAt(row, position) != nullptr;
    filters.cmbFilter[row.index] = exists ? position : -1;
    if (!exists) outOfRange.push_back(static_cast<int>(row.index));
  }
}

void StoreFilters(const Filters& filters, CampaignRecord& record) {
  for (const FilterRow& row : FilterRows()) {
    if (!row.IsStored()) continue;
    record.*row.use = filters.chkFilter[row.index];
    if (row.when != nullptr) record.*row.when = filters.cmbFilter[row.index];
    if (row.text != nullptr) record.*row.values[0] = filters.*row.text;
    for (size_t value = 0; row.numbers != nullptr && value < row.values.size(); ++value)
      record.*row.values[value] = JoinDigitGroups((filters.*row.numbers)[value]);
  }
}

void CopyTexts(const WizardState& state, CampaignRecord& record) {
  record.Letter = state.rtfLetter;
  record.Email_Subject = state.txtEmailSubject;
  record.Email_Body = state.txtEmailBody;
  record.SMS = state.txtSMS;
}

}  // namespace

void CopyToRecord(const WizardState& state, CampaignRecord& record) {
  record.Step1 = state.bStepComplete[1];
  record.Step2 = state.bStepComplete[2];
  record.Step3 = state.bStepComplete[3];
  CopyDate(state.options.dteDate[0], record.Date1);
  CopyDate(state.options.dteDate[1], record.Date2);
  record.Records = StoredNumber(state.options.txtCriteria);
  record.RecordsStart = StoredNumber(state.options.txtCriteriaStart);
  record.ReminderID = state.options.cmbReminder;
  record.Makes = state.options.txtMakes;
  CopyTexts(state, record);
  StoreFilters(state.filters, record);
}

std::vector<int> CopyFromRecord(const CampaignRecord& record, WizardState& state) {
  state.bStepComplete = {true, record.Step1, record.Step2, record.Step3};
  QueryOptions& options = state.options;
  CopyStoredDate(record.Date1, options.dteDate[0]);
  CopyStoredDate(record.Date2, options.dteDate[1]);
  options.dteDateHasText = {};
  options.FromDateText.clear();
  options.ToDateText.clear();
  options.cmbType.clear();
  options.cmbReminder = record.ReminderID >= 0 && record.ReminderID < kReminders ? record.ReminderID : -1;
  options.txtCriteria = QString::number(record.Records);
  options.txtCriteriaStart = QString::number(record.RecordsStart);
  options.txtMakes = record.Makes;
  state.rtfLetter = record.Letter;
  state.txtEmailSubject = record.Email_Subject;
  state.txtEmailBody = record.Email_Body;
  state.txtSMS = record.SMS;
  std::vector<int> outOfRange;
  CopyFilters(record, state.filters, outOfRange);
  return outOfRange;
}

QString WindowCaption(const QString& base, const CampaignRecord& record) {
  return record.Campaign_Name.isEmpty() ? base : base + QLatin1String(" - [") + record.Campaign_Name + u']';
}

CampaignSettings::CampaignSettings(Statements& statements, CurrentCampaign& campaign, WizardState& state,
                                   QuerySelection& selection, ResultsView& results, Diagnostics diagnostics)
    : statements_(statements),
      campaign_(campaign),
      state_(state),
      selection_(selection),
      results_(results),
      diagnostics_(diagnostics) {}

void CampaignSettings::SetupCampaignData() {
  diagnostics_.ui.SetBusy(true);
  std::optional<QString> failure;
  const Statements::Telling once(statements_, Statements::Tells::kLossOnce);
  try {
    FollowRows();
    FillLists();
    const std::vector<int> outOfRange = CopyFromRecord(campaign_.record, state_);
    const QString uncounted = QStringLiteral("Records found: ");
    state_.lblRecords = {uncounted, uncounted};
    state_.leftOut = {};
    selection_.ShowNode(campaign_.record.CampaignTypeID);
    state_.appliedFilters = state_.bStepComplete[2] ? state_.filters : Filters();
    if (!outOfRange.empty())
      failure = QStringLiteral("The condition of filter %1 is not one of its list.").arg(outOfRange.front());
    campaign_.CampaignChanged = false;
    results_.DisplayResults(campaign_.record.ID);
  } catch (const std::exception& error) {
    failure = QString::fromUtf8(error.what());
  }
  diagnostics_.ui.SetBusy(false);
  if (failure) diagnostics_.errors.ShowError(0, QStringLiteral("SetupCampaignData"), *failure);
  if (const QStringList anew = selection_.NumbersReadAnew(); !anew.isEmpty())
    diagnostics_.ui.ShowMessage(InformationMessage(anew.join(u'\r')));
}

void CampaignSettings::FillLists() {
  const QString description = QStringLiteral("Description");
  for (const FilterRow& row : FilterRows()) {
    if (row.listStatement == nullptr) continue;
    state_.filterLists[row.index] = FillListFromQuery(statements_, QString::fromLatin1(row.listStatement), description)
                                        .value_or(std::vector<ListRow>());
  }
  FillCampaignList();
}

void CampaignSettings::FillCampaignList() {
  state_.cmbCampaigns = FillListFromQuery(statements_, QStringLiteral("proc_sel_Marketing_Campaigns"),
                                          QStringLiteral("Campaign_Name"), QStringLiteral("ID"))
                            .value_or(std::vector<ListRow>());
}

bool CampaignSettings::SaveCampaignSettings(const std::function<void()>& save) {
  const int oldId = campaign_.record.ID;
  CopyToRecord(state_, campaign_.record);
  save();
  const int newId = campaign_.record.ID;
  if (newId < 1 || diagnostics_.ui.QuitRequested()) return false;
  const Statements::Telling once(statements_, Statements::Tells::kLossOnce);
  // A stored campaign that was deleted meanwhile gets a new number. Rows with its old number may still exist, or may
  // have been selected since.
  if (oldId != 0 && newId != oldId) unfollowed_.push_back({.from = oldId, .to = newId});
  const bool rowsFollowed = FollowRows();
  if (!rowsFollowed) campaign_.CampaignChanged = true;  // the rows still have to be saved
  FillCampaignList();
  return rowsFollowed;
}

bool CampaignSettings::FollowRows() {
  std::erase_if(unfollowed_, [this](const Renumbering& rows) {
    if (!statements_.dbExecute(RenumberingOfRows(rows.from, rows.to)).Ok()) return false;
    const int shown = results_.CampaignId();
    if (shown == rows.from || shown == rows.to) results_.FollowCampaign(rows.to);
    return true;
  });
  return std::none_of(unfollowed_.begin(), unfollowed_.end(),
                      [this](const Renumbering& rows) { return rows.to == campaign_.record.ID; });
}

bool CampaignSettings::LoadCampaignSettings(const std::function<int()>& load) {
  if (load() < 1) return false;
  SetupCampaignData();
  return true;
}

bool CampaignSettings::LoadLetters(int position) {
  const auto index = static_cast<size_t>(position);
  if (position < 0 || index >= state_.cmbCampaigns.size()) {
    diagnostics_.ui.ShowMessage({.text = QStringLiteral("Campaign not selected."), .icon = MessageIcon::kExclamation});
    return false;
  }
  const Message question{
      .text = QStringLiteral(
          "The existing Letter Templates in the Campaign will be lost and replaced by the letters in the selected Campaign.\r\rOK to continue?"),
      .icon = MessageIcon::kQuestion,
      .buttons = MessageButtons::kYesNo,
      .defaultAnswer = MessageAnswer::kNo};
  if (diagnostics_.ui.ShowMessage(question) != MessageAnswer::kYes) return false;
  const auto id = static_cast<int>(state_.cmbCampaigns[index].data.ToInt());
  Recordset row;
  if (statements_.dbOpenRec(row, StoredCampaignStatement(id))) return false;
  if (row.Eof()) {
    diagnostics_.ui.ShowMessage({.text = QStringLiteral("Campaign not found!"), .icon = MessageIcon::kExclamation});
    return false;
  }
  PutTexts(TextsOf(row), state_);
  CopyTexts(state_, campaign_.record);
  campaign_.CampaignChanged = true;
  return true;
}

bool CampaignSettings::CloseRequest() {
  if (!unfollowed_.empty()) FollowRows();  // the last chance for rows that a save left with their old number
  if (!campaign_.CampaignChanged) return true;
  const Message question{.text = QLatin1String("Campaign details may have changed and have not been saved.\r\rExit ") +
                                 diagnostics_.ui.ApplicationTitle() + QLatin1String(" and lose changes?"),
                         .icon = MessageIcon::kQuestion,
                         .buttons = MessageButtons::kYesNo,
                         .defaultAnswer = MessageAnswer::kNo};
  if (diagnostics_.ui.ShowMessage(question) != MessageAnswer::kYes) return false;
  const Statements::Telling once(statements_, Statements::Tells::kLossOnce);
  FollowRows();
  const int id = campaign_.record.ID;
  if (id < 0) statements_.dbExecute(DeletionOfRows(id));
  return true;
}

void CampaignSettings::Quit() {
  QStringList batches;
  for (const Renumbering& rows : unfollowed_)
    batches += RenumberingOfRows(rows.from, rows.to);
  const int id = campaign_.record.ID;
  if (campaign_.CampaignChanged && id < 0) batches += DeletionOfRows(id);
  if (batches.isEmpty()) return;
  Connection& connection = statements_.Shared();
  try {
    connection.ResumeWork();
    connection.ReopenIfLost();
    for (const QString& batch : batches)
      connection.Driver().Execute(batch);
  } catch (const DatabaseError& error) {
    diagnostics_.log.WriteLog(QLatin1String("Quit: ") + error.Description());
  }
}

}  // namespace qbx
