#include "printing/ui/report_help.h"

#include <QString>

namespace qbx {
namespace {

constexpr char kReportView[] = R"(
<p>This is how the report comes out of the printer, page by page. The first page shows at once; the others are laid out
while you read.</p>
<p><b>Print...</b> asks for printer, copies and pages first. <b>Export...</b> saves all pages as one PDF file.</p>
<p>Letters that were printed or exported count as sent. If you close the window without either, you are asked.</p>
<p>Where a text is too long for its place, such as an address for the window of an envelope, a line below the page says
so.</p>
<p>A group that hides its rows shows them at a double-click, or with <b>Details...</b>; <b>Back</b> goes back.</p>
<h4>Keys</h4>
<ul><li>Page Up and Page Down scroll, and turn the page at its end. Ctrl+Home and Ctrl+End go to the first and last
page.</li>
<li>Ctrl++ and Ctrl+- make the page larger and smaller, as does the wheel with Ctrl.</li>
<li>Ctrl+F goes to the box to find a text, Return or F3 to the next page that holds it.</li>
<li>Esc goes back from details, and closes the report.</li></ul>)";

constexpr char kSelectPrinter[] = R"(
<p>Choose the printer, how many copies, and which pages. Empty boxes mean all of them.</p>
<p>Letters can also be counted: <b>From Letter</b> 51 to 100 prints these and no others, each with all its pages.
<b>Next 50</b> fills in the fifty behind those that were printed last. Only letters that were printed count as
sent.</p>
<p>With <b>both sides</b> each letter begins on a sheet of its own. Tick that the paper has your head already, and
the letterhead is left out. Both sides and trays are only offered where the printer has them.</p>
<h4>Keys</h4>
<ul><li>Return prints, Esc leaves without printing.</li></ul>)";

}  // namespace

HelpText ReportViewHelp() {
  return {QStringLiteral("A report on the screen"), QString::fromUtf8(kReportView)};
}

HelpText SelectPrinterHelp() {
  return {QStringLiteral("Printing"), QString::fromUtf8(kSelectPrinter)};
}

}  // namespace qbx
