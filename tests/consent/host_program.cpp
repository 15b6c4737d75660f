#include "consent/host_program.h"

#include "consent/host_statement.h"

namespace qbx::consent {
namespace {

QString Shown(const Number& number) {
  return number ? QString::number(*number) : QStringLiteral("NULL");
}

}  // namespace

/// A customer, in most cases one with a row.
Customer* HostProgram::Choose() {
  if (world_.customers.empty()) return nullptr;
  if (!ledger_.rows.empty() && random_.Chance(85)) {
    const auto found = world_.customers.find(random_.Pick(ledger_.rows).customer);
    return found == world_.customers.end() ? nullptr : &found->second;
  }
  return &std::next(world_.customers.begin(), random_.Between(0, static_cast<int>(world_.customers.size()) - 1))
              ->second;
}

void HostProgram::Disturb(int customer) {
  for (Row& row : ledger_.rows)
    if (row.customer == customer) row.disturbed = true;
}

void HostProgram::Withdraw() {
  if (random_.Chance(8)) {
    bool& option = random_.Chance(70) ? world_.settings.onlyOptedIn : world_.settings.usingPlatform;
    option = true;
    StoreSettings(world_.settings, Database());
    for (Row& row : ledger_.rows)
      row.disturbed = true;
    return story_.Tell(QStringLiteral("  host: only opted in %1, platform %2")
                           .arg(world_.settings.onlyOptedIn)
                           .arg(world_.settings.usingPlatform));
  }
  Customer* customer = Choose();
  if (customer == nullptr) return;
  const int key = customer->key;
  Disturb(key);
  if (random_.Chance(10)) {
    RemoveCustomer(key, Database());
    world_.customers.erase(key);
    return story_.Tell(QStringLiteral("  host: customer %1 is deleted").arg(key));
  }
  WithdrawOne(*customer);
  StoreConsent(*customer, Database());
  story_.Tell(QStringLiteral("  host: customer %1 now consent %2, No Marketing %3, text %4, e-mail %5, letter %6")
                  .arg(key)
                  .arg(Shown(customer->consent))
                  .arg(customer->noMarketing)
                  .arg(Shown(customer->canSms), Shown(customer->canEmail), Shown(customer->canLetter)));
}

void HostProgram::WithdrawOne(Customer& customer) {
  switch (random_.Between(0, 7)) {
    case 0:
    case 1:
      customer.consent = 2;
      break;
    case 2:
      customer.noMarketing = true;
      break;
    case 3:
      customer.consent = random_.Chance(50) ? Number() : Number(0);
      break;
    case 4:
      customer.canSms = random_.Chance(60) ? Number(0) : Number();
      break;
    case 5:
      customer.canEmail = random_.Chance(60) ? Number(0) : Number();
      break;
    case 6:
      customer.canLetter = random_.Chance(60) ? Number(0) : Number();
      break;
    default:  // consent: leaves nobody out
      customer.consent = 1;
      customer.canSms = customer.canEmail = customer.canLetter = 1;
      customer.noMarketing = false;
      break;
  }
}

void HostProgram::ChangeRow() {
  if (ledger_.rows.empty()) return;
  Row& row = ledger_.rows[static_cast<size_t>(random_.Between(0, static_cast<int>(ledger_.rows.size()) - 1))];
  if (row.gone || row.processed) return;
  row.disturbed = true;
  const auto run = [&](const char* statement) {
    (HostStatement(Database(), statement) << Number(static_cast<int>(row.record))).Run();
    story_.Tell(QStringLiteral("  other program: ") + row.Name() + QStringLiteral(": ") + QLatin1String(statement));
  };
  switch (random_.Between(0, 2)) {
    case 0:
      row.gone = true;
      return run("DELETE FROM [Campaign Results] WHERE RecordID = ?");
    case 1:
      row.sms.wanted = row.mail.wanted = false;
      return run("UPDATE [Campaign Results] SET Send_SMS = 0, Send_Email = 0 WHERE RecordID = ?");
    default:
      row.processed = true;
      return run("UPDATE [Campaign Results] SET Processed = 1 WHERE RecordID = ?");
  }
}

}  // namespace qbx::consent
