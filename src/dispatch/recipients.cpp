#include "dispatch/recipients.h"

#include "dispatch/message_maker.h"
#include "network/mime_message.h"
#include "util/text.h"

namespace qbx {

Recipients RecipientsOf(const QString& typed) {
  Recipients to;
  for (const QString& part : typed.split(QLatin1Char(';'))) {
    const QString address = TrimBlanks(part);
    if (address.isEmpty()) continue;
    if (part.contains(QLatin1Char('\r')) || part.contains(QLatin1Char('\n'))) {
      to.problem = QStringLiteral("The email address holds a line break: ") + OneLine(part);
      return to;
    }
    if (to.problem.isEmpty()) to.problem = RecipientProblem(address);
    to.addresses.append(address);
  }
  if (to.addresses.isEmpty()) to.problem = QStringLiteral("No Email Address specified.");
  return to;
}

}  // namespace qbx
