// The table of faults, and of places in the work on a campaign.

#pragma once

#include <array>

#include "tds_server/faults.h"

namespace qbx::faults {

/// What must hold after the command ran again.
enum class Promise {
  kRows,      ///< each customer who may be contacted has one row
  kMessages,  ///< and each message arrived once or is in doubt
  kLetters,   ///< and each letter went out or is in doubt
  kSaved,     ///< the new campaign exists once
};

/// A place: a command of the program, and the request at which the fault happens.
struct Place {
  const char* name;
  const char* command;  ///< %1: the campaign, %2: a file for letters, %3: the starting query
  const char* match;    ///< a part of the request; nullptr: the fault happens while connecting
  int skip = 0;
  Promise promise = Promise::kRows;
};

constexpr std::array kPlaces = {
    Place{"connect", "status", nullptr},
    Place{"options", "options list", "proc_selp__Option"},
    Place{"step 1", "query %1", "proc_Marketing_AddAllCustomers"},
    Place{"pruning", "query %1", "DELETE FROM [Campaign Results] WHERE [RecordID] IN"},
    Place{"commit of the query", "query %1", "COMMIT"},
    Place{"results", "results %1", "proc_selp_Campaign_Results"},
    Place{"toggle", "results %1 --send-by sms=0 email=0 letter=0", "UPDATE [Campaign Results] SET"},
    Place{"begin of a change", "results %1 --send-by sms=0 email=0 letter=0", "BEGIN TRANSACTION"},
    Place{"journal", "send %1 --yes", "[proc_updp_Send_Journal]", 4, Promise::kMessages},
    Place{"begin of a message", "send %1 --yes", "BEGIN TRANSACTION", 6, Promise::kMessages},
    Place{"record", "send %1 --yes", "[proc_addp_SMS]", 2, Promise::kMessages},
    Place{"mark", "send %1 --yes", "SET Processed = 1", 2, Promise::kMessages},
    Place{"commit of a message", "send %1 --yes", "COMMIT", 6, Promise::kMessages},
    Place{"counters", "send %1 --yes", "proc_selp_Results_Counters", 3, Promise::kMessages},
    Place{"letters' file", "letters %1 --pdf %2", "[proc_updp_Letters_File]", 0, Promise::kLetters},
    Place{"letters' mark", "letters %1 --pdf %2", "[proc_updp_Letters_Processed]", 0, Promise::kLetters},
    Place{"save", "query --query %3 --sms Hello --save Another", "[proc_addp_Marketing_Campaign]", 0, Promise::kSaved},
};

/// Something that goes wrong.
struct Trouble {
  const char* name;
  tds::FaultKind kind;
  tds::FaultMoment moment;
  int number = 0;       ///< of an error
  bool byHand = false;  ///< not in CI, because it takes as long as a time-out, or resembles another
  int refusals = 0;     ///< how many attempts to connect again are refused after it
};

/// Faults at a request.
constexpr std::array kTroubles = {
    Trouble{"closed before", tds::FaultKind::kClose, tds::FaultMoment::kRequest},
    Trouble{"closed after", tds::FaultKind::kClose, tds::FaultMoment::kAnswered, 0, true},
    Trouble{"restart of 6 seconds", tds::FaultKind::kClose, tds::FaultMoment::kRequest, 0, true, 3},
    Trouble{"reset before", tds::FaultKind::kReset, tds::FaultMoment::kRequest, 0, true},
    Trouble{"reset after", tds::FaultKind::kReset, tds::FaultMoment::kAnswered},
    Trouble{"closed in a row, if it has one", tds::FaultKind::kClose, tds::FaultMoment::kRow, 0, true},
    Trouble{"slow", tds::FaultKind::kSlow, tds::FaultMoment::kRequest, 0, true},
    Trouble{"answered late", tds::FaultKind::kSlow, tds::FaultMoment::kAnswered, 0, true},
    Trouble{"deadlock", tds::FaultKind::kError, tds::FaultMoment::kRequest, 1205},
    Trouble{"hangs before", tds::FaultKind::kHang, tds::FaultMoment::kRequest, 0, true},
    Trouble{"hangs after", tds::FaultKind::kHang, tds::FaultMoment::kAnswered, 0, true},
};

/// Faults while connecting. They last as long as the command runs.
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
