// Who writes an event.

#pragma once

#include <QString>

namespace qbx {

/// What the event log needs to know of the layers above it. Owned and kept current by the Application.
struct EventContext {
  QString user;             ///< the current user
  int campaignId = 0;       ///< the current campaign's ID, negative for an unsaved one
  int DatabaseVersion = 0;  ///< version of the host database; 0 until the options were loaded
};

}  // namespace qbx
