// What was printed or saved of a report.

#pragma once

#include <QSet>
#include <QString>
#include <set>

#include "reports/report_page.h"

namespace qbx {

/// A document is what is printed as one, such as a letter.
struct TakenOut {
  bool all = false;
  std::set<int> documents = {};  ///< numbers of the documents
  QSet<QString> keys = {};       ///< values of their groups, such as the keys of letters

  void Add(const ReportPage& page) {
    documents.insert(page.document);
    keys.insert(page.key);
  }
  void Remove(const ReportPage& page) {
    documents.erase(page.document);
    keys.remove(page.key);
  }
  void Add(const TakenOut& other) {
    all = all || other.all;
    documents.insert(other.documents.begin(), other.documents.end());
    keys += other.keys;
  }
  [[nodiscard]] bool Any() const { return all || !documents.empty(); }
  [[nodiscard]] bool Holds(const QString& key) const { return all || keys.contains(key); }
};

}  // namespace qbx
