#include "letters/letter_preview.h"

#include "letters/letters_table.h"
#include "merge/merge_fields.h"
#include "merge/sample_customer.h"
#include "printing/report_files.h"

namespace qbx {

namespace {

constexpr int kPreviewLocation = 4200;

}  // namespace

void PreviewLetter(const LetterPreviewParts& parts, const QString& letter) {
  LettersTable letters(parts.statements, parts.startup.RunKey);
  try {
    if (!letters.Begin(parts.diagnostics.clock.Today())) return;
    letters.Add({.letter = MergeFields(letter, SampleMergeValues(), parts.diagnostics.clock.Today()),
                 .nameAddress = QString::fromUtf16(kSampleNameAddress)});
  } catch (const DatabaseError& error) {
    parts.statements.ShowFailure(kPreviewLocation, QStringLiteral("LetterPreview"), error);
    return;
  }
  static_cast<void>(parts.reports.PrintReport(LetterReportPath(parts.startup.ProgramFolder, parts.options),
                                              ReportMode::kPreview, true, {Value(QString())}));
  letters.Clear();
}

}  // namespace qbx
