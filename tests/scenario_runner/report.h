// What a scenario prints while it runs.

#pragma once

#include <QObject>
#include <cstdlib>
#include <functional>

namespace qbx::scenario {

class Report : public QObject {
  Q_OBJECT
 public:
  /// \param failed  called with the number of each failure
  Report(QString file, std::function<void(int)> failed) : file_(std::move(file)), failed_(std::move(failed)) {}

  void FailAt(const QString& text, int line);
  [[nodiscard]] int Failures() const { return failures_; }

  /// For the runner's own test.
  Q_INVOKABLE void crash() const { std::abort(); }

 public Q_SLOTS:
  void printLine(const QString& text) const { Print(QStringLiteral("     ") + text); }
  void checked(const QString& check) const { Print(QStringLiteral("ok   ") + check); }
  /// Counts a failure that was printed before as a failed check.
  void checkFailed(const QString& check) const { printLine(QStringLiteral("(in \"%1\")").arg(check)); }
  /// \param stack  of JavaScript; its innermost line of the scenario is named
  void fail(const QString& text, const QString& stack);

 private:
  static void Print(const QString& line);

  QString file_;
  std::function<void(int)> failed_;
  int failures_ = 0;
};

}  // namespace qbx::scenario
