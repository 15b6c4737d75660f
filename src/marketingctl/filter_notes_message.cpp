#include "marketingctl/filter_notes_message.h"

#include "queries/filter_notes.h"
#include "queries/plain_messages.h"

namespace qbx::ctl {

void TellFilterNotes(UserInterface& ui, const Filters& filters, bool boatEdition) {
  for (const QString& note : FilterNotes(filters, boatEdition))
    ui.ShowMessage(InformationMessage(note));
}

}  // namespace qbx::ctl
