// Reading a report definition.

#pragma once

#include <QString>
#include <memory>

#include "reports/report_definition.h"

namespace qbx {

/// Bytes of a definition at most.
inline constexpr qint64 kMaxDefinitionBytes = qint64{256} * 1024;
/// How deep subreports may stand in each other: each level multiplies the statements that are run.
inline constexpr int kMaxSubreportDepth = 3;
/// Bytes of an image at most, and pixels of all images of a definition.
inline constexpr qint64 kMaxImageBytes = qint64{16} * 1024 * 1024;
inline constexpr qint64 kMaxImagePixels = 40'000'000;

/// Reads a definition, which is XML as docs/report-definitions.md describes, and its images, which have to stand in or
/// below its folder. Nothing else is read, no network and no external entity. A definition is taken as a file that somebody sent: what could do harm is refused.
/// \throws ReportError
[[nodiscard]] std::shared_ptr<ReportDefinition> LoadDefinition(const QString& path);

}  // namespace qbx
