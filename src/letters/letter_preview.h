// Previewing a letter with the sample customer.

#pragma once

#include <QString>

#include "database/statements.h"
#include "printing/print_report.h"

namespace qbx {

/// What a preview works with, by reference.
struct LetterPreviewParts {
  Statements& statements;
  ReportPrinter& reports;
  const Options& options;
  const StartupValues& startup;
  Diagnostics diagnostics;
};

/// Merges a letter with the sample customer and shows it as it will be printed.
/// \param letter  the template in its stored form
void PreviewLetter(const LetterPreviewParts& parts, const QString& letter);

}  // namespace qbx
