// Measures letters: merged, journalled, stored, read again as rich text, laid out and written to one PDF file.
//
//   letters_bench [LETTERS [ROUNDS]]
//
// Prints medians. Needs no display. The comparison uses the library alone: for each letter, it puts the same text as
// HTML into a QTextDocument and paints it into a PDF file. The two sides run in turn. Processor time is printed, too,
// because the commits on a busy disk hide the cost of the program. The peak of memory counts from the made garage on.
// To judge it, compare one round of 100 letters with one of 10,000.

#include <malloc.h>

#include <QAbstractTextDocumentLayout>
#include <QFileInfo>
#include <QGuiApplication>
#include <QPainter>
#include <QPdfWriter>
#include <QTextDocument>
#include <array>
#include <ctime>
#include <fstream>

#include "letters/letter_run.h"
#include "support/rounds.h"
#include "support/sample_program.h"

namespace {

using namespace qbx;
using namespace qbx::bench;

constexpr char kTest[] =
    "Our records show that your {make} {model}, registration {regno}, is due for its annual test. It is against the law to drive a vehicle without a valid certificate and it may affect your insurance, so please do not leave it until the last day. We have kept a place for you in the workshop and our technicians will carry out the test while you wait, with coffee and the newspapers in our reception.";
constexpr std::array kChecks = {
    "Tyres, brakes, lights, steering and suspension are checked by our own technicians while you wait.",
    "If anything needs attention we will tell you the price of the work before we begin, with no obligation.",
    "Book your annual service on the same day and we will take fifteen pounds off the total of your bill."};
constexpr char kPlace[] =
    "To keep your place please telephone us or simply reply to this letter with your registration number. If the time does not suit you, we are open from eight until six on weekdays and from eight until one on Saturdays, and we can collect your vehicle from your home or your place of work anywhere within ten miles.";
constexpr char kSold[] =
    "If you have sold the vehicle or have already had the test carried out elsewhere, please accept our apologies and let us know, so that we can bring our records up to date and will not trouble you again.";

QString Escaped(const char* text) {
  return QString::fromLatin1(text).replace(u'{', QStringLiteral("\\{")).replace(u'}', QStringLiteral("\\}"));
}

QString LetterRtf() {
  QString list;
  for (const char* check : kChecks)
    list += QStringLiteral("{\\pard\\fi-360\\li720\\u8226?\\tab %1\\par}").arg(QString::fromLatin1(check));
  return QStringLiteral(
             "{\\rtf1\\ansi\\deff0{\\fonttbl{\\f0\\fswiss Liberation Sans;}}{\\colortbl;\\red176\\green0\\blue0;}\\f0\\fs22 \\{currentdate\\}\\par\\par Dear \\{contact\\},\\par\\par {\\b\\cf1 \\{regno\\}: annual test}\\par\\par %1\\par\\par %2\\pard\\par %3\\par\\par {\\i %4}\\par\\par Yours sincerely,\\par\\par {\\b The service team}\\par}")
      .arg(Escaped(kTest), list, QString::fromLatin1(kPlace), QString::fromLatin1(kSold));
}

QString LetterHtml(int number) {
  QString list;
  for (const char* check : kChecks)
    list += QStringLiteral("<li>%1</li>").arg(QString::fromLatin1(check));
  return QStringLiteral(
             "<p>Mr Alan Hartley<br/>14 Orchard Row<br/>Milbury<br/>Northshire<br/>MB4 2QT</p><p>25/11/2026<br/>Ref %1</p><p>Dear Mr Hartley,</p><p><b><span style='color:#b00000'>AB12 CDE: annual test</span></b></p><p>%2</p><ul>%3</ul><p>%4</p><p><i>%5</i></p><p>Yours sincerely,</p><p><b>The service team</b></p>")
      .arg(number)
      .arg(QString::fromLatin1(kTest), list, QString::fromLatin1(kPlace), QString::fromLatin1(kSold));
}

/// The comparison: the library alone.
void WriteWithLibrary(const QString& path, int letters) {
  QPdfWriter writer(path);
  writer.setPageSize(QPageSize(QPageSize::A4));
  writer.setPageMargins(QMarginsF(20, 20, 20, 20), QPageLayout::Millimeter);
  writer.setResolution(300);
  QPainter painter(&writer);
  for (int number = 1; number <= letters; ++number) {
    QTextDocument document;
    document.setUndoRedoEnabled(false);
    document.documentLayout()->setPaintDevice(&writer);
    document.setDocumentMargin(0);
    document.setDefaultFont(QFont(QStringLiteral("Liberation Sans"), 11));
    document.setPageSize(QSizeF(writer.width(), writer.height()));
    document.setHtml(LetterHtml(number));
    if (number > 1) writer.newPage();
    document.documentLayout()->draw(&painter, {});
  }
}

class Silent final : public LetterObserver {
 public:
  void Begins(int) override {}
  void Progress(int) override {}
  void Ends() override {}
  bool Cancelled() override { return false; }
};

struct Cost {
  std::vector<double> elapsed;
  std::vector<double> processor;  // milliseconds of the process

  void Measure(const std::function<void()>& work) {
    const std::clock_t before = std::clock();
    elapsed.push_back(Milliseconds(work));
    processor.push_back(1000.0 * static_cast<double>(std::clock() - before) / CLOCKS_PER_SEC);
  }
};

long PeakKilobytes() {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);)
    if (line.starts_with("VmHWM:")) return std::stol(line.substr(6));
  return 0;
}

/// Returns the memory that making the garage took, and begins to count again.
void ForgetPeak() {
  malloc_trim(0);
  std::ofstream("/proc/self/clear_refs") << "5";
}

/// The rows of a campaign, all with a letter.
int MakeRows(SampleProgram& program, int letters) {
  CampaignRecord& record = program.App().campaign.record;
  record.ID = 1;
  const QString batch =
      QStringLiteral(
          "DELETE FROM [Campaign Results] WHERE CampaignID = 1; INSERT INTO [Campaign Results] (CampaignID, Customer, Title, Firstname, Lastname, Address, Contact, Make, Model, Vehicle, Marketing, Send_SMS, Send_Email, Send_Letter, Processed) SELECT 1, Customer, Title, Firstname, Lastname, Address || char(13) || Postcode, Contact, 'FORD', 'FOCUS', 'AB12 CDE', 1, 0, 0, 1, 0 FROM Customers WHERE Consent_Response = 1 AND No_Marketing = 0 AND IsNull(Can_Send_Letter, 1) <> 0 AND IsNull(Address, '') <> '' ORDER BY Customer LIMIT %1")
          .arg(letters);
  program.App().connection.Driver().Execute(batch);
  return letters;
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  const int letters = argc > 1 ? std::max(1, std::atoi(argv[1])) : 1000;
  const int rounds = argc > 2 ? std::max(1, std::atoi(argv[2])) : 5;
  SampleProgram program(letters * 3 + 100);
  program.Start();
  MakeRows(program, letters);
  const QString ours = program.App().startup.ProgramFolder + QStringLiteral("ours.pdf");
  const QString theirs = program.App().startup.ProgramFolder + QStringLiteral("library.pdf");
  const QString letter = LetterRtf();
  NoOutlet outlet;
  Silent observer;
  ReportPrinter reports = program.Desk().MakeReportPrinter(outlet);
  Cost our;
  Cost library;
  const bool withLibrary = rounds > 1;
  ForgetPeak();
  for (int round = 0; round < rounds; ++round) {
    our.Measure([&] {
      const LetterSummary summary = program.Desk()
                                        .MakeLetterRun(reports, observer)
                                        .GenerateLetters(1, letter, {.pdfFile = ours, .markProcessed = false});
      if (summary.letters != letters) Fail("Not every row got a letter.");
    });
    if (withLibrary) library.Measure([&] { WriteWithLibrary(theirs, letters); });
  }
  std::printf("%d letters, median of %d rounds\n", letters, rounds);
  std::printf("ours          %8.0f ms, %8.0f ms of processor, %.2f KB a letter, peak of memory %ld KB\n",
              Median(our.elapsed), Median(our.processor), static_cast<double>(QFileInfo(ours).size()) / 1000 / letters,
              PeakKilobytes());
  if (withLibrary)
    std::printf("library alone %8.0f ms, %8.0f ms of processor; its speed x %.2f elapsed, x %.2f by processor\n",
                Median(library.elapsed), Median(library.processor), Median(library.elapsed) / Median(our.elapsed),
                Median(library.processor) / Median(our.processor));
  return 0;
}
