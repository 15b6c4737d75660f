// What a scenario asked for and cannot be had.

#pragma once

#include <QString>
#include <exception>

namespace qbx::scenario {

/// Thrown by commands; arrives in the scenario as a JavaScript exception with this text.
class ScenarioError : public std::exception {
 public:
  explicit ScenarioError(const QString& text) : text_(text), utf8_(text.toUtf8()) {}
  [[nodiscard]] const QString& Text() const { return text_; }
  [[nodiscard]] const char* what() const noexcept override { return utf8_.constData(); }

 private:
  QString text_;
  QByteArray utf8_;
};

}  // namespace qbx::scenario
