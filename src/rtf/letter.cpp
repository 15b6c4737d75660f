#include "rtf/letter.h"

#include "rtf/rtf_writer.h"

namespace qbx {

RtfLosses Letter::Load(const QString& stored) {
  asItCame_ = stored;
  writtenRevision_ = -1;
  return ReadRtf(stored, document_);
}

QString Letter::Stored() const {
  if (!document_.isModified()) return asItCame_;
  if (writtenRevision_ != document_.revision()) {
    written_ = document_.isEmpty() ? QString() : WriteRtf(document_);
    writtenRevision_ = document_.revision();
  }
  return written_;
}

}  // namespace qbx
