#include "database/command.h"

namespace qbx {
namespace {

[[noreturn]] void ThrowClientError(int number, const QString& text) {
  throw DatabaseError(number, text, {});
}

[[noreturn]] void ThrowItemNotFound() {
  ThrowClientError(
      kItemNotFound,
      QStringLiteral("Item cannot be found in the collection corresponding to the requested name or ordinal."));
}

bool Fits(const Parameter& parameter, const Value& value) {
  if (value.IsNull()) return true;
  switch (parameter.type) {
    case ValueType::kText:
      return parameter.size == 0 || value.Type() != ValueType::kText || value.ToText().size() <= parameter.size;
    case ValueType::kDateTime:
      if (value.Type() == ValueType::kText) return value.ToText().trimmed().isEmpty() || value.ToDateTime().isValid();
      return value.Type() == ValueType::kDateTime;
    case ValueType::kBool:
    case ValueType::kInt:
    case ValueType::kDouble:
    case ValueType::kDecimal: {
      if (value.Type() != ValueType::kText) return value.Type() != ValueType::kDateTime;
      bool isNumber = false;
      (void)value.ToText().trimmed().toDouble(&isNumber);
      return isNumber;
    }
    default:
      return true;
  }
}

/// Gives the session the command's time-out for one call.
class TimeoutOverride {
 public:
  TimeoutOverride(Connection& connection, int seconds) : connection_(connection), active_(seconds > 0) {
    if (active_) connection_.Driver().SetCommandTimeout(seconds);
  }
  ~TimeoutOverride() {
    if (active_ && connection_.IsOpen()) connection_.SetCommandTimeout(connection_.CommandTimeout());
  }
  TimeoutOverride(const TimeoutOverride&) = delete;
  TimeoutOverride& operator=(const TimeoutOverride&) = delete;

 private:
  Connection& connection_;
  bool active_;
};

}  // namespace

void Command::Assign(Parameter& parameter, const Value& value) {
  if (!Fits(parameter, value)) {
    ThrowClientError(kWrongType,
                     QStringLiteral("Application uses a value of the wrong type for the current operation."));
  }
  parameter.value = value;
  parameter.isSet = true;
}

void Command::SetParameter(const QString& name, const Value& value) {
  for (Parameter& parameter : parameters) {
    if (parameter.name.compare(name, Qt::CaseInsensitive) == 0) return Assign(parameter, value);
  }
  ThrowItemNotFound();
}

void Command::SetParameter(int position, const Value& value) {
  if (position < 0 || position >= static_cast<int>(parameters.size())) ThrowItemNotFound();
  Assign(parameters[static_cast<std::size_t>(position)], value);
}

std::unique_ptr<RowSource> Command::Open() {
  if (connection == nullptr) {
    ThrowClientError(
        kConnectionClosed,
        QStringLiteral(
            "The connection cannot be used to perform this operation. It is either closed or invalid in this context."));
  }
  try {
    const TimeoutOverride timeout(*connection, commandTimeout);
    return connection->Driver().Call(commandText, parameters);
  } catch (const DatabaseError& error) {
    connection->KeepErrors(error);
    throw;
  }
}

void Command::Execute() {
  (void)Open();
}

}  // namespace qbx
