// A letter between its stored form and its editor.

#pragma once

#include <QString>
#include <QTextDocument>

#include "rtf/rtf_reader.h"

namespace qbx {

/// Loads a stored letter into a document and gives it back. A letter without edits, or whose edits were all undone,
/// comes back exactly as it was stored. An edited letter is written anew.
class Letter {
 public:
  /// \param document  of the editor. This class owns its modified mark and its undo steps; otherwise only edits may set
  ///                  them.
  explicit Letter(QTextDocument& document) : document_(document) {}

  /// \param stored  RTF or plain text
  /// \return what an edit will lose
  RtfLosses Load(const QString& stored);

  /// The letter in its stored form; empty when it has no content. Cheap as long as nothing changes.
  [[nodiscard]] QString Stored() const;

 private:
  QTextDocument& document_;
  QString asItCame_;
  mutable QString written_;
  mutable int writtenRevision_ = -1;
};

}  // namespace qbx
