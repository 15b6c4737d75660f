// The common report of an unexpected error.

#pragma once

#include <QString>
#include <functional>

#include "diagnostics/log_file.h"
#include "diagnostics/status_box.h"
#include "platform/user_interface.h"

namespace qbx {

/// Writes the log line and the event, closes the status box and shows "An unexpected error occured." with the details.
class ErrorReport {
 public:
  /// Writes an event: type, table, key, details. The owner of the event log sets it, so error report and event log do
  /// not include each other.
  using EventWriter = std::function<void(int eventType, int tableId, const QString& key, const QString& details)>;

  ErrorReport(const LogFile& log, StatusBox& status, UserInterface& ui) : log_(log), status_(status), ui_(ui) {}

  void SetEventWriter(EventWriter writer) { writeEvent_ = std::move(writer); }

  /// \param location   number of the place in the code; shown, and used as the event's key
  /// \param procedure  routine or module that failed, for the log
  /// \param serious    asks the user to restart instead of to call
  /// \param reason     for scripts
  void ShowError(int location, const QString& procedure, const QString& description, bool serious = false,
                 Reason reason = Reason::kOther);

 private:
  const LogFile& log_;
  StatusBox& status_;
  UserInterface& ui_;
  EventWriter writeEvent_;
};

}  // namespace qbx
