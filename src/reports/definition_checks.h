// What a definition has to fulfil beyond its schema.

#pragma once

#include <QString>

#include "reports/report_definition.h"

namespace qbx {

/// Room for rows that every page must have, beside its headers and footers.
inline constexpr qreal kLeastBodyHeight = 10 * kUnitsPerMillimetre;

/// Checks that names which are used are defined, that no formula stands for itself, that pages have room for rows and sections find room on a page, that one
/// group at most counts its own pages, and that the rows come from one statement that only reads; subreports likewise.
/// \throws ReportError
void CheckDefinition(const ReportDefinition& report, const QString& file);

/// The part of it that looks at the room on pages, for a report whose paper was turned.
/// \throws ReportError
void CheckRoom(const ReportDefinition& report, const QString& file);

}  // namespace qbx
