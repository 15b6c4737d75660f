// What a scenario prints while it runs.

#pragma once

#include <QString>

namespace qbx::scenario {

class Report {
 public:
  explicit Report(QString file) : file_(std::move(file)) {}

  void Print(const QString& line);
  void Ok(const QString& check) { Print(QStringLiteral("ok   ") + check); }
  /// \param stack  of JavaScript; its innermost line of the scenario is named
  void Fail(const QString& text, const QString& stack);
  void FailAt(const QString& text, int line);
  /// A failure that was printed already is also a check's.
  void CheckFailed(const QString& check) { Print(QStringLiteral("     (in \"%1\")").arg(check)); }
  [[nodiscard]] int Failures() const { return failures_; }

 private:
  QString file_;
  int failures_ = 0;
};

}  // namespace qbx::scenario
