// A letter between where it is stored and where it is edited.

#pragma once

#include <QString>
#include <QTextDocument>

#include "rtf/rtf_reader.h"

namespace qbx {

/// Loads a stored letter into a document and gives it back. A letter that nobody edited, or whose edits were all undone,
/// comes back as it was stored, byte for byte; an edited one is written anew.
class Letter {
 public:
  /// \param document  of the editor. Its modified mark and undo steps belong to this class: only an edit may set them.
  explicit Letter(QTextDocument& document) : document_(document) {}

  /// \param stored  RTF or plain text
  /// \return what an edit will lose
  RtfLosses Load(const QString& stored);

  /// The letter as it is to be stored; empty when nothing is in it. Cheap while nothing changes.
  [[nodiscard]] QString Stored() const;

 private:
  QTextDocument& document_;
  QString asItCame_;
  mutable QString written_;
  mutable int writtenRevision_ = -1;
};

}  // namespace qbx
