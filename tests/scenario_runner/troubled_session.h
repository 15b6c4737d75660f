// Troubles of a database server, put between the program and its sessions.

#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <atomic>
#include <mutex>

#include "database/connection.h"

namespace qbx::scenario {

/// What goes wrong. The sessions look at it from the database thread.
class Troubles {
 public:
  std::atomic<int> delayMilliseconds = 0;  ///< before each statement and call
  std::atomic<bool> refuse = false;        ///< no session can be opened, and open ones are lost

  /// Lets calls of a procedure fail with a text; an empty text lets them work again.
  void FailProcedure(const QString& name, const QString& text);
  /// The text for a procedure, or for a batch that calls it; empty: it works.
  [[nodiscard]] QString FailureOf(const QString& procedureOrBatch) const;
  /// Lets a procedure be missing, or be there again.
  void DropProcedure(const QString& name, bool dropped);
  [[nodiscard]] bool IsDropped(const QString& procedureOrBatch) const;
  void NoteCall(const QString& procedureOrBatch);
  /// Procedures and batches that reached the server, in order.
  [[nodiscard]] QStringList Calls() const;
  void Reset();

 private:
  mutable std::mutex mutex_;
  QHash<QString, QString> failing_;
  QHash<QString, bool> dropped_;
  QStringList calls_;
};

/// A factory whose sessions have the troubles. They must outlive the sessions.
[[nodiscard]] SessionFactory WithTroubles(SessionFactory inner, Troubles& troubles);

}  // namespace qbx::scenario
