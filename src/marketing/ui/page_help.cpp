#include "marketing/ui/page_help.h"

#include <QString>
#include <QStringList>

#include "queries/filter_table.h"
#include "queries/starting_queries.h"
#include "results/send_methods.h"
#include "util/boat_wording.h"
#include "wizard/step_checks.h"

namespace qbx {
namespace {

constexpr char kStart[] = R"(
<p>A campaign takes five steps: choose where to start from, narrow it down, look at the rows, write, and send. A
report stops after the third.</p>
<p><b>Start a new Report / Campaign</b> begins with nothing chosen. <b>Load a saved Report / Campaign</b> opens the
list of what was saved.</p>
<p>Nothing goes to a customer before you press the button for it on step 5.</p>
<h4>Keys</h4>
<ul><li>Ctrl+N starts a new one, Ctrl+O loads, Ctrl+Q leaves the program.</li>
<li>Alt and an underlined letter goes to what has the letter. Tab goes on, Shift+Tab back.</li></ul>)";

constexpr char kQuery[] = R"(
<p>Choose in the tree which customers or vehicles to start from. On the right stands what the choice means and what it
asks for: dates, makes, a reminder, or how many.</p>
<p>The line below the options says in words what will be selected. <b>Next &gt;</b> selects it; nothing is sent.</p>
<p>Customers marked "No Marketing" and customers who opted out are left out from the beginning. Step 2 says how many,
and can take them in.</p>
<h4>Keys</h4>
<ul><li>Up and Down walk the tree, Left and Right close and open a branch.</li>
<li>A date is typed as 1/3/2026 or 010326. Up and Down go a day on or back, F4 opens the calendar.</li>
<li>Space chooses a make in the list, or type the makes with commas between.</li>
<li>Return is <b>Next &gt;</b>. Ctrl+Page Down and Ctrl+Page Up turn the pages.</li></ul>)";

constexpr char kFilters[] = R"(
<p>Each tick narrows the rows of step 1 further; only <i>No Marketing</i> and <i>Include Opted Out</i> take in more.
With a vehicle filter the rows are vehicles, also when step 1 chose customers.</p>
<p><b>Refresh</b> counts again, says how many rows each filter left out, and shows the first fifty below. <b>Next &gt;</b> applies the filters and
shows the rows.</p>
<h4>Keys</h4>
<ul><li>Space ticks a filter, Tab goes to its boxes, Up and Down choose.</li>
<li>F5 refreshes, Return is <b>Next &gt;</b>.</li></ul>
<h4>The filters</h4>
%1)";

constexpr char kResults[] = R"(
<p>These are the rows that were found. Take out whom you do not want to write to, and tick who gets a text, an e-mail
or a letter. A row with a tick in Processed is not sent again. A pale box means that the number or address is missing;
its tip says which.</p>
<p>Select rows with Shift or Ctrl, and a right click ticks, unticks or takes out all of them. <b>Undo</b> takes the last
change back. <b>Find</b> goes to a text in any column. <b>Show</b> leaves only the rows of one kind in sight: letters,
messages and send methods still take all rows.</p>
<p><b>Set Send Methods</b> sets the ticks of all rows by a rule, first for SMS, then e-mail, then letter. A row that a
rule does not name keeps its tick. Where the options ask for consent, no rule ticks a row without it.</p>
<h4>Keys</h4>
<ul><li>Space flips the tick under the cursor. Ctrl+T, Ctrl+E and Ctrl+L tick Send SMS, Send Email and Send Letter of
the selected rows, with Shift they untick.</li>
<li>Delete takes the selected rows out, Ctrl+Z takes the last change back, Ctrl+Delete takes one row out without asking.</li>
<li>Ctrl+F goes to <b>Find</b>, F3 goes on and Shift+F3 back. Letters typed in the rows find in the sorted column. A
click on a heading sorts.</li>
<li>Home and End go to the ends of a row, with Ctrl to the first and last row. Ctrl+C copies, Ctrl+A selects all.</li>
<li>Shift+F10 opens the menu of the grid; <b>Columns...</b> in it, or a right click on a heading, says which are
shown. What is shown is what is printed.</li>
<li>Tab leaves the grid.</li></ul>
<h4>The rules for SMS</h4>
%1
<h4>The rules for e-mail</h4>
%2
<h4>The rules for letters</h4>
%3)";

constexpr char kTemplates[] = R"(
<p>Write here what goes out: the letter, the e-mail and the text message. Each has a tab of its own, the last one
shows examples. <b>Load</b> takes over what was written for another campaign.</p>
<p>A field such as {contact} becomes the name of each customer. <b>Insert field</b> lists all of them. Below each text
stands what would surprise: fields that do not exist or stay empty, and who the customer sees as the sender.</p>
<p><b>Preview</b> shows a sample customer first, then those of the next run one after the other. A test goes to
yourself and to nobody else.</p>
<h4>Keys</h4>
<ul><li>Tab leaves a text. Ctrl+Tab puts a tab into the letter.</li>
<li>In the letter: Ctrl+B, Ctrl+I and Ctrl+U for bold, italic and underlined; Ctrl+L, Ctrl+E and Ctrl+R to align;
Ctrl+Shift+L for bullets; Ctrl+Return for a new page.</li>
<li>Ctrl+Z undoes, Ctrl+F finds, F3 finds the next. The tip of each tool says its key.</li>
<li>Shift+F10 in a word that is underlined as misspelt offers others.</li>
<li>Left and Right change the tab when the focus is on the tabs.</li></ul>)";

constexpr char kProcess[] = R"(
<p><b>Create and Print Preview the Letters</b> makes a letter for each row with a tick in Send Letter and shows them.
Print or export them there: what was printed or exported is not made again, unless you say so when it asks. Make the
letters before you send, since a row that the mailshot has finished gets none.</p>
<p>Here the messages go out. The counters say how many and what they cost; <b>Send the SMS and Email Mailshots</b>
starts, after some questions. What went out before does not go again, unless you say so when it asks.</p>
<p><b>Pause Sending</b> stops after the customer whose messages are on their way. Start again and it goes on from
there.</p>
<p>The chart shows who gets what and whom the query left out. <b>Copy the Picture</b> puts it on the clipboard.</p>
<p>The log says what happened; it is kept for the next day. What failed is listed with its reason and tried
again by the next run. What is <i>in doubt</i> may have arrived or not: the next run leaves it alone until you say
which.</p>
<h4>Keys</h4>
<ul><li>While it sends the focus is on <b>Pause Sending</b>: Space pauses.</li>
<li>In the list of failures Ctrl and Shift select several, Return shows the row on step 3.</li></ul>)";

constexpr char kManager[] = R"(
<p>The campaigns and reports that were saved. <b>Load</b> opens the selected one, <b>Edit</b> changes its name and
description, <b>Copy</b> makes a second one to change. <b>Delete</b> takes it away for good, with its rows.</p>
<p>When you save, give the campaign a name by which you find it again. The history says who did what and when.</p>
<h4>Keys</h4>
<ul><li>Return loads, F2 edits, Delete deletes.</li>
<li>Ctrl+Tab goes to the next tab. Esc leaves an edit, then the window.</li></ul>)";

constexpr char kSpreadsheet[] = R"(
<p>The columns and rows that the results grid showed when you opened this window, in its order. What you change in the
grid afterwards does not change the sheet.</p>
<p><b>Export to Excel</b> writes a workbook and opens it: numbers stay numbers, dates stay dates, and no text is ever
taken for a formula. A number that is not known is 0.</p>
<p><b>Export to CSV File</b> writes a text file for other programs. There a number that is not known is empty.</p>
<p>A file that exists is replaced only when the new one is complete.</p>
<h4>Keys</h4>
<ul><li>Ctrl+C copies the selected cells, Ctrl+A selects all.</li>
<li>Esc closes the window; while a file is being written it cancels.</li></ul>)";

QString Listed(const QStringList& names, const QStringList& meanings) {
  QString list;
  for (qsizetype i = 0; i < names.size(); ++i)
    list += QStringLiteral("<li><b>%1</b><br>%2</li>").arg(names[i].toHtmlEscaped(), meanings[i].toHtmlEscaped());
  return QStringLiteral("<ul>%1</ul>").arg(list);
}

QString FilterList(bool boatEdition) {
  QStringList names;
  QStringList tips;
  for (const FilterRow& row : FilterRows()) {
    names += FilterWording(row.caption, boatEdition);
    tips += FilterWording(row.tip, boatEdition);
  }
  return Listed(names, tips);
}

QString PageText(int tab, bool boatEdition) {
  switch (tab) {
    case kQueryTab:
      return QString::fromUtf8(kQuery);
    case kFilterTab:
      return QString::fromUtf8(kFilters).arg(FilterList(boatEdition));
    case kResultsTab:
      return QString::fromUtf8(kResults).arg(Listed(SmsRules(), SmsRuleTips()), Listed(EmailRules(), EmailRuleTips()),
                                             Listed(LetterRules(), LetterRuleTips()));
    case kTemplatesTab:
      return QString::fromUtf8(kTemplates);
    case kProcessTab:
      return QString::fromUtf8(kProcess);
    default:
      return QString::fromUtf8(kStart);
  }
}

}  // namespace

HelpText PageHelp(int tab, bool boatEdition) {
  const QString title = tab > 0 ? TabCaption(tab) : QStringLiteral("The beginning");
  const QString text = PageText(tab, boatEdition);
  return {title, boatEdition ? BoatWording(text) : text};
}

HelpText ManagerHelp() {
  return {QStringLiteral("Campaigns and reports"), QString::fromUtf8(kManager)};
}

HelpText SpreadsheetHelp() {
  return {QStringLiteral("Spreadsheet"), QString::fromUtf8(kSpreadsheet)};
}

}  // namespace qbx
