#include "database/procedure.h"

namespace qbx {

void Procedure::Prepare(Arguments arguments) {
  Session& driver = connection_.Driver();
  if (preparedFor_ != connection_.SessionsOpened()) {
    command_.connection = &connection_;
    command_.commandText = name_;
    command_.commandTimeout = timeoutSeconds_;
    command_.parameters = driver.DescribeProcedure(name_);
    preparedFor_ = connection_.SessionsOpened();
  }
  for (Parameter& parameter : command_.parameters)
    parameter.isSet = false;
  for (const auto& [name, value] : arguments)
    command_.SetParameter(QString::fromLatin1(name), value);
}

void Procedure::Execute(Arguments arguments) {
  Prepare(arguments);
  command_.Execute();
}

bool Procedure::Finds(Arguments arguments) {
  Prepare(arguments);
  const std::unique_ptr<RowSource> rows = command_.Open();
  return rows && rows->Next();
}

Recordset Procedure::Open(Arguments arguments) {
  Prepare(arguments);
  return Recordset::ReadAll(command_.Open());
}

}  // namespace qbx
