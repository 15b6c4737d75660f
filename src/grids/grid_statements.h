// The statements with which a grid inserts and deletes rows.

#pragma once

#include <QString>
#include <vector>

#include "database/value.h"

namespace qbx {

/// The text "proc_delp_" + procedure + " ( key, key )"; a key that is no number is quoted.
[[nodiscard]] QString DeleteRowStatement(const QString& storedProc, const std::vector<Value>& key);

/// The text "proc_addp_" + procedure + "_InsertRow ( header ID, record ID)". Extra parameters follow after ", " before
/// the closing bracket.
[[nodiscard]] QString InsertRowStatement(const QString& storedProc, qint64 headerId, qint64 recordId,
                                         const QString& extraParams);

}  // namespace qbx
