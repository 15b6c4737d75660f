// Prints on stderr what the filters of a campaign do unexpectedly.

#pragma once

#include "platform/user_interface.h"
#include "queries/filters.h"

namespace qbx::ctl {

/// Prints the notes that step 2 shows beside the filters, one a line.
void TellFilterNotes(UserInterface& ui, const Filters& filters, bool boatEdition);

}  // namespace qbx::ctl
