// A wish of a scenario that cannot be fulfilled.

#pragma once

#include <QString>
#include <exception>

namespace qbx::scenario {

/// Thrown by commands. The scenario gets it as a JavaScript exception with this text.
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
