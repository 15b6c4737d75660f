#include "wizard/query_selection.h"

#include "database/list_query.h"
#include "queries/filter_notes.h"
#include "queries/query_catalogue.h"
#include "queries/query_sentence.h"
#include "wizard/dates_over.h"

namespace qbx {

QuerySelection::QuerySelection(Statements& statements, CurrentCampaign& campaign, WizardState& state,
                               const Options& options, const EditionFlags& edition, Diagnostics diagnostics)
    : statements_(statements),
      campaign_(campaign),
      state_(state),
      options_(options),
      edition_(edition),
      diagnostics_(diagnostics) {}

void QuerySelection::NodeClick(int index) {
  if (!FindQueryNode(index, edition_.boat)) return;
  state_.options.txtMakes.clear();
  ShowNode(index);
  campaign_.record.CampaignTypeID = index;
  Changed();
}

QStringList QuerySelection::Makes() const {
  QStringList items;
  for (const ListRow& row : state_.lstMakes)
    items.append(row.text);
  return items;
}

void QuerySelection::MakesTyped(const QString& text) {
  state_.options.txtMakes = text;
  state_.lstMakesSelected = MakesInText(text, Makes());
  Changed();
}

void QuerySelection::MakesClick(const std::vector<bool>& selected) {
  state_.lstMakesSelected = selected;
  state_.lstMakesSelected.resize(state_.lstMakes.size());
  const QStringList items = Makes();
  QStringList chosen;
  for (qsizetype row = 0; row < items.size(); ++row) {
    if (state_.lstMakesSelected[static_cast<size_t>(row)]) chosen.append(items[row]);
  }
  state_.options.txtMakes = RebuildMakesText(state_.options.txtMakes, items, chosen);
  Changed();
}

FilterView QuerySelection::FilterClick() {
  Changed();
  return ShowFilterState(state_.filters);
}

void QuerySelection::IncludeOptedOutClick(bool ticked) {
  state_.filters.chkIncludeOptedOut = ticked;
  if (const std::optional<Message> message = GuardIncludeOptedOut(state_.filters, options_))
    diagnostics_.ui.ShowMessage(*message);
}

QString QuerySelection::Selects() const {
  return QuerySelects(state_.selectedNode, state_.options, ReminderList(options_), edition_.boat,
                      diagnostics_.clock.Today());
}

QStringList QuerySelection::NumbersReadAnew() const {
  return qbx::NumbersReadAnew(campaign_.record, edition_.boat);
}

QString QuerySelection::DatesOver() const {
  return DatesOverText(state_.selectedNode, state_.options, diagnostics_.clock.Today());
}

void QuerySelection::ShowNode(int index) {
  const std::optional<QueryNode> node = FindQueryNode(index, edition_.boat);
  state_.selectedNode = node ? index : kNoQuery;
  state_.panels = node ? ShowQueryOptions(node->QueryKey(), state_.options, edition_.boat, diagnostics_.clock.Today())
                       : NoQueryPanels();
  state_.filters.mileageVisible = state_.panels.mileageFilterVisible;
  if (!state_.panels.makesListStatement) return;
  state_.lstMakes = FillListFromQuery(statements_, *state_.panels.makesListStatement, QStringLiteral("Description"),
                                      QStringLiteral("RecordID"))
                        .value_or(std::vector<ListRow>());
  state_.lstMakesSelected = MakesInText(state_.options.txtMakes, Makes());
}

}  // namespace qbx
