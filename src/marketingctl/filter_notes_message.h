// What the filters of a campaign do that one may not expect, on stderr.

#pragma once

#include "platform/user_interface.h"
#include "queries/filters.h"

namespace qbx::ctl {

/// Says what step 2 says beside the filters, a line each.
void TellFilterNotes(UserInterface& ui, const Filters& filters, bool boatEdition);

}  // namespace qbx::ctl
