// Troubles of a database server, in sessions between the program and the real ones.

#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <atomic>
#include <mutex>

#include "database/connection.h"

namespace qbx::scenario {

/// The troubles. Sessions read them in the database thread.
class Troubles {
 public:
  std::atomic<int> delayMilliseconds = 0;  ///< before each statement and call
  std::atomic<bool> refuse = false;        ///< no session can be opened, and open ones are lost

  /// Makes calls of a procedure fail with a text; an empty text ends this.
  void FailProcedure(const QString& name, const QString& text);
  /// The text for a procedure, or for a batch that calls it; empty: it works.
  [[nodiscard]] QString FailureOf(const QString& procedureOrBatch) const;
  /// Makes a procedure missing, or brings it back.
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
