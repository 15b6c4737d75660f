// The table: where on the road of one campaign something goes wrong, and what.

#pragma once

#include <array>

#include "tds_server/faults.h"

namespace qbx::faults {

/// A point of the road: a command of the program, and the request at which the fault happens.
struct Place {
  const char* name;
  const char* command;  ///< %1: the campaign, %2: a file for letters
  const char* match;    ///< in the request; nullptr: the fault is one of connecting
  int skip = 0;
};

constexpr std::array kPlaces = {
    Place{"connect", "status", nullptr},
    Place{"options", "options list", "proc_selp__Option"},
    Place{"step 1", "query %1", "proc_Marketing_AddAllCustomers"},
    Place{"pruning", "query %1", "DELETE FROM [Campaign Results]"},
    Place{"commit of step 1", "query %1", "COMMIT"},
    Place{"results", "results %1", "proc_selp_Campaign_Results"},
    Place{"toggle", "results %1 --send-by sms=0 email=0 letter=1", "UPDATE [Campaign Results] SET"},
    Place{"journal", "send %1 --yes", "proc_addp_Send_Journal", 3},
    Place{"mark", "send %1 --yes", "SET Processed = 1", 2},
    Place{"record", "send %1 --yes", "proc_addp_SMS", 2},
    Place{"commit of a message", "send %1 --yes", "COMMIT", 6},
    Place{"letters", "letters %1 --pdf %2", "proc_updp_Letters_Processed"},
    Place{"save", "query --query %3 --sms Hello --save Another", "proc_addp_Marketing_Campaign"},
};

/// Something that goes wrong.
struct Trouble {
  const char* name;
  tds::FaultKind kind;
  tds::FaultMoment moment;
  int number = 0;     ///< of an error
  bool slow = false;  ///< takes as long as a time-out, so that CI leaves it out
};

/// At a request.
constexpr std::array kTroubles = {
    Trouble{"closed before", tds::FaultKind::kClose, tds::FaultMoment::kRequest},
    Trouble{"closed after", tds::FaultKind::kClose, tds::FaultMoment::kAnswered},
    Trouble{"reset before", tds::FaultKind::kReset, tds::FaultMoment::kRequest},
    Trouble{"reset after", tds::FaultKind::kReset, tds::FaultMoment::kAnswered},
    Trouble{"closed in a row", tds::FaultKind::kClose, tds::FaultMoment::kRow},
    Trouble{"slow", tds::FaultKind::kSlow, tds::FaultMoment::kRequest},
    Trouble{"deadlock", tds::FaultKind::kError, tds::FaultMoment::kRequest, 1205},
    Trouble{"hangs before", tds::FaultKind::kHang, tds::FaultMoment::kRequest, 0, true},
    Trouble{"hangs after", tds::FaultKind::kHang, tds::FaultMoment::kAnswered, 0, true},
};

/// While connecting; it goes on for as long as the command runs.
constexpr std::array kConnectTroubles = {
    Trouble{"closed at connect", tds::FaultKind::kClose, tds::FaultMoment::kConnect},
    Trouble{"reset at login", tds::FaultKind::kReset, tds::FaultMoment::kLogin},
    Trouble{"wrong password", tds::FaultKind::kError, tds::FaultMoment::kLogin, 18456},
    Trouble{"offline", tds::FaultKind::kError, tds::FaultMoment::kLogin, 4060},
    Trouble{"slow", tds::FaultKind::kSlow, tds::FaultMoment::kLogin},
    Trouble{"hangs at connect", tds::FaultKind::kHang, tds::FaultMoment::kConnect, 0, true},
    Trouble{"hangs at login", tds::FaultKind::kHang, tds::FaultMoment::kLogin, 0, true},
};

}  // namespace qbx::faults
