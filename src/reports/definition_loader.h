// Reading a report definition.

#pragma once

#include <QString>
#include <memory>

#include "reports/report_definition.h"

namespace qbx {

/// The most bytes of a definition.
inline constexpr qint64 kMaxDefinitionBytes = qint64{256} * 1024;
/// How deep subreports may be nested. Each level multiplies the number of statements.
inline constexpr int kMaxSubreportDepth = 3;
/// The most bytes of one image, and the most pixels of all images of a definition.
inline constexpr qint64 kMaxImageBytes = qint64{16} * 1024 * 1024;
inline constexpr qint64 kMaxImagePixels = 40'000'000;

/// Reads a definition (XML as described in docs/report-definitions.md) and its images, which must be in or below its
/// folder. Nothing else is read, neither from the network nor through external entities. The file may come from
/// anybody: whatever could do harm is refused.
/// \throws ReportError
[[nodiscard]] std::shared_ptr<ReportDefinition> LoadDefinition(const QString& path);

}  // namespace qbx
