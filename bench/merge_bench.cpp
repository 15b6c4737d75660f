// Compares the compiled template with the chain of case-insensitive replaces that defines its result.
//
//   merge_bench [ROUNDS [ROWS]]     merges a template of usual size for made-up customers
//   merge_bench DIR COUNT qbx       merges the template DIR/t.txt with the rows DIR/d.tsv
//
// The first prints medians of the two sides, which run in turn. The second prints elapsed seconds, bytes and a hash, to
// compare them with other engines. Its rows have ten fields, in the order of replacing.

#include <QCryptographicHash>
#include <QFile>
#include <QStringList>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <vector>

#include "merge/compiled_template.h"
#include "merge/merge_fields.h"
#include "support/rounds.h"

namespace {

using qbx::CompiledTemplate;
using qbx::MergeValues;
using qbx::bench::Median;

constexpr size_t kCustomers = 1000;
const QDate kToday(2024, 2, 1);

double Seconds(const std::function<void()>& work) {
  return qbx::bench::Milliseconds(work) / 1000;
}

/// 900 characters with eight fields, like a reminder letter.
QString MadeUpTemplate() {
  QString text =
      u"Dear {contact},\n\nOur records show that your {make} {model}, registration {regno}, is due for its annual test "
      u"on "
      u"{duedate}. We have kept a place for you at {duetime} on that day, {title} {lastname}. "_qs;
  const QString filler =
      u"It is against the law to drive a vehicle without a valid certificate and it may affect your insurance. Our "
      u"technicians "
      u"will check the tyres, brakes, lights, steering and suspension while you wait. "_qs;
  while (text.size() < 880)
    text += filler;
  return text.left(880) + u"\n\nYours sincerely,\nMJ"_qs.left(20);
}

std::vector<MergeValues> MadeUpCustomers() {
  const QStringList titles{u"Mr"_qs, u"Mrs"_qs, u"Ms"_qs, u"Dr"_qs};
  const QStringList names{u"James"_qs, u"Mary"_qs, u"Patricia"_qs, u"Robert"_qs, u"Elizabeth"_qs, u"Williams"_qs};
  const QStringList makes{u"FORD"_qs, u"VAUXHALL"_qs, u"VOLKSWAGEN"_qs, u"BMW"_qs};
  const QStringList models{u"FOCUS"_qs, u"ASTRA"_qs, u"GOLF"_qs, u"320D"_qs, u"QASHQAI"_qs};
  std::mt19937 random(7);
  const auto pick = [&](const QStringList& list) { return list[static_cast<qsizetype>(random()) % list.size()]; };
  std::vector<MergeValues> customers(kCustomers);
  for (MergeValues& values : customers) {
    values.title = pick(titles);
    values.firstname = pick(names);
    values.lastname = pick(names);
    values.contact = values.title + u' ' + values.firstname + u' ' + values.lastname;
    values.make = pick(makes);
    values.model = pick(models);
    values.regno = u"AB%1 CDE"_qs.arg(random() % 100, 2, 10, QChar(u'0'));
    values.duedate = u"%1/03/2024"_qs.arg(1 + random() % 28, 2, 10, QChar(u'0'));
    values.duetime = u"%1:30"_qs.arg(8 + random() % 10, 2, 10, QChar(u'0'));
  }
  return customers;
}

/// The chain, written with the library's own replace.
void ReplaceChain(const QString& text, const MergeValues& v, const QString& today, QString& merged) {
  const std::array<std::pair<QString, const QString*>, 10> fields{{{u"{contact}"_qs, &v.contact},
                                                                   {u"{make}"_qs, &v.make},
                                                                   {u"{model}"_qs, &v.model},
                                                                   {u"{regno}"_qs, &v.regno},
                                                                   {u"{duedate}"_qs, &v.duedate},
                                                                   {u"{title}"_qs, &v.title},
                                                                   {u"{firstname}"_qs, &v.firstname},
                                                                   {u"{lastname}"_qs, &v.lastname},
                                                                   {u"{duetime}"_qs, &v.duetime},
                                                                   {u"{currentdate}"_qs, &today}}};
  merged = text;
  for (const auto& [pattern, value] : fields)
    merged.replace(pattern, *value, Qt::CaseInsensitive);
}

int Compare(int rounds, size_t rows) {
  const QString text = MadeUpTemplate();
  const std::vector<MergeValues> customers = MadeUpCustomers();
  const QString today = qbx::MergeDate(kToday);
  CompiledTemplate compiled(text);
  QString merged;
  QString chained;
  for (const MergeValues& values : customers) {
    compiled.Merge(values, kToday, merged);
    ReplaceChain(text, values, today, chained);
    if (merged != chained) {
      std::fputs("The compiled template and the chain differ.\n", stderr);
      return 1;
    }
  }

  std::array<std::vector<double>, 3> seconds;
  for (int round = 0; round < rounds; ++round) {
    seconds[0].push_back(Seconds([&] {
      for (size_t i = 0; i < rows; ++i)
        ReplaceChain(text, customers[i % kCustomers], today, chained);
    }));
    seconds[1].push_back(Seconds([&] {
      for (size_t i = 0; i < rows; ++i)
        merged = qbx::MergeFields(text, customers[i % kCustomers], kToday);
    }));
    seconds[2].push_back(Seconds([&] {
      for (size_t i = 0; i < rows; ++i)
        compiled.Merge(customers[i % kCustomers], kToday, merged);
    }));
  }

  std::printf("%zu merges of %lld characters, median of %d rounds\n", rows, static_cast<long long>(text.size()),
              rounds);
  const std::array<const char*, 3> names{"QString::replace chain", "MergeFields", "CompiledTemplate"};
  const double chain = Median(seconds[0]);
  for (size_t i = 0; i < names.size(); ++i) {
    const double median = Median(seconds[i]);
    std::printf("%-24s %9.1f ms %8.3f us a merge %8.1f x\n", names[i], median * 1e3,
                median * 1e6 / static_cast<double>(rows), chain / median);
  }
  return 0;
}

int MergeFolder(const QString& folder, size_t count) {
  QFile templateFile(folder + u"/t.txt"_qs);
  QFile rowsFile(folder + u"/d.tsv"_qs);
  if (!templateFile.open(QIODevice::ReadOnly) || !rowsFile.open(QIODevice::ReadOnly)) {
    std::fputs("Cannot read t.txt and d.tsv in that folder.\n", stderr);
    return 1;
  }
  std::vector<MergeValues> customers;
  QDate today;
  while (!rowsFile.atEnd()) {
    const QStringList fields = QString::fromUtf8(rowsFile.readLine()).chopped(1).split(u'\t');
    if (fields.size() != 10) continue;
    customers.push_back({.title = fields[5],
                         .firstname = fields[6],
                         .lastname = fields[7],
                         .contact = fields[0],
                         .make = fields[1],
                         .model = fields[2],
                         .regno = fields[3],
                         .duedate = fields[4],
                         .duetime = fields[8]});
    today = QDate::fromString(fields[9], u"dd/MM/yyyy"_qs);
  }
  if (customers.empty()) {
    std::fputs("There are no rows in d.tsv.\n", stderr);
    return 1;
  }

  CompiledTemplate compiled(QString::fromUtf8(templateFile.readAll()));
  QString merged;
  qsizetype size = 0;
  const double elapsed = Seconds([&] {
    for (size_t i = 0; i < count; ++i) {
      compiled.Merge(customers[i % customers.size()], today, merged);
      size += merged.size();
    }
  });
  QCryptographicHash hash(QCryptographicHash::Sha256);
  for (const MergeValues& values : customers) {
    compiled.Merge(values, today, merged);
    hash.addData(merged.toUtf8());
  }
  std::printf("elapsed=%.6f bytes=%lld hash=%s\n", elapsed, static_cast<long long>(size),
              hash.result().toHex().left(12).constData());
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 4 && qstrcmp(argv[3], "qbx") == 0) {
    return MergeFolder(QString::fromLocal8Bit(argv[1]), std::strtoul(argv[2], nullptr, 10));
  }
  const int rounds = argc > 1 ? std::max(1, std::atoi(argv[1])) : 9;
  const size_t rows = argc > 2 ? std::strtoul(argv[2], nullptr, 10) : 100'000;
  return Compare(rounds, rows);
}
