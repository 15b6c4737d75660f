// The checks of a definition beyond its schema.

#pragma once

#include <QString>

#include "reports/report_definition.h"

namespace qbx {

/// The least height for rows on every page, beside its headers and footers.
inline constexpr qreal kLeastBodyHeight = 10 * kUnitsPerMillimetre;

/// Checks, in the report and its subreports:
/// - Every name that is used is defined, and no formula refers to itself.
/// - Pages have room for rows, and every section fits on a page.
/// - At most one group counts its own pages.
/// - The rows come from one statement that only reads.
/// \throws ReportError
void CheckDefinition(const ReportDefinition& report, const QString& file);

/// Only the checks of the room on pages, for a report whose paper was turned.
/// \throws ReportError
void CheckRoom(const ReportDefinition& report, const QString& file);

}  // namespace qbx
