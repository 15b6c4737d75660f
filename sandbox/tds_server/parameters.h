// The parameters of a procedure call as a client sends them.

#pragma once

#include <QString>

#include "database/value.h"
#include "tds_server/bytes.h"
#include "tds_server/types.h"

namespace qbx::tds {

struct SentParameter {
  QString name;  ///< with "@"; empty when given by position
  bool isOutput = false;
  bool isDefault = false;  ///< the procedure's default holds
  WireType type = {};
  Value value = {};
};

/// Reads one parameter: its name, type and value.
/// \throws ProtocolError for an unknown type
[[nodiscard]] SentParameter ReadParameter(ByteReader& in);

/// A value as a statement writes it: N'text', 1.5, NULL.
[[nodiscard]] QString Literal(const Value& value);

}  // namespace qbx::tds
