#include "consent/rows.h"

namespace qbx::consent {
namespace {

constexpr int kShortestMobileOfRule = 6;
constexpr int kShortestEmailOfRule = 6;

/// Consented, not asked, opted out: from the mildest to the strictest.
int StrictnessOfConsent(const Number& consent) {
  switch (consent.value_or(0)) {
    case 1:
      return 0;
    case 2:
      return 2;
    default:
      return 1;
  }
}

/// Agreed, never asked, refused.
int StrictnessOfChannel(const Number& canSend) {
  if (!canSend) return 1;
  return *canSend == 1 ? 0 : 2;
}

bool HasMobile(const Row& row) {
  return !WithoutTrailingBlanks(row.mobile).isEmpty();
}
bool HasAddress(const Row& row) {
  return !WithoutTrailingBlanks(row.email).isEmpty() && row.email.indexOf(QLatin1Char('@')) > 0;
}
bool HasNoEmail(const Row& row) {
  return WithoutTrailingBlanks(row.email).size() < kShortestEmailOfRule || row.email.indexOf(QLatin1Char('@')) < 1;
}

/// An "All except ..." rule: flags everybody who agreed, then unflags the exceptions.
bool Except(bool flag, bool agreed, bool exception) {
  return (flag || agreed) && !exception;
}

bool SmsFlag(const Row& row, int rule, bool agreed) {
  const bool flag = row.sms.wanted;
  switch (rule) {
    case 0:
      return flag || (agreed && WithoutTrailingBlanks(row.mobile).size() >= kShortestMobileOfRule);
    case 1:
      return false;
    case 2:
      return Except(flag, agreed, row.letter || row.mail.wanted);
    case 3:
      return Except(flag, agreed, row.letter);
    case 4:
      return Except(flag, agreed, row.mail.wanted);
    case 5:
      return flag || (agreed && HasNoEmail(row) && HasMobile(row));
    default:
      return flag;
  }
}

bool EmailFlag(const Row& row, int rule, bool agreed) {
  const bool flag = row.mail.wanted;
  switch (rule) {
    case 0:
      return flag || (agreed && HasAddress(row));
    case 1:
      return false;
    case 2:
      return Except(flag, agreed, row.letter || row.sms.wanted);
    case 3:
      return Except(flag, agreed, row.letter);
    case 4:
      return Except(flag, agreed, row.sms.wanted);
    default:
      return flag;
  }
}

bool LetterFlag(const Row& row, int rule, bool agreed) {
  const bool flag = row.letter;
  switch (rule) {
    case 0:
      return flag || agreed;
    case 1:
      return false;
    case 2:
      return Except(flag, agreed, row.mail.wanted || row.sms.wanted);
    case 3:
      return Except(flag, agreed, row.mail.wanted);
    case 4:
      return Except(flag, agreed, row.sms.wanted);
    default:
      return flag;
  }
}

}  // namespace

Row MakeRow(const Picked& picked) {
  const Customer& customer = *picked.customer;
  Row row;
  row.customer = customer.key;
  row.vehicle = picked.vehicle == nullptr ? QString() : picked.vehicle->registration;
  row.values = ValuesOf(picked);
  row.mobile = Plain(customer.mobile);
  row.email = Plain(customer.email);
  row.address = Plain(customer.address);
  row.consent = customer.consent;
  row.canSms = customer.canSms;
  row.canEmail = customer.canEmail;
  row.canLetter = customer.canLetter;
  row.marketing = !customer.noMarketing;
  return row;
}

Verdict AskAgain(const Row& row, Channel channel, const World& world) {
  const Customer* now = world.Find(row.customer);
  if (now == nullptr) return Verdict::kMustNot;
  if (StrictnessOfConsent(now->consent) > StrictnessOfConsent(row.consent)) return Verdict::kMustNot;
  if (now->noMarketing && row.marketing) return Verdict::kMustNot;
  const auto answer = [channel](const auto& one) {
    return channel == Channel::kSms ? one.canSms : channel == Channel::kEmail ? one.canEmail : one.canLetter;
  };
  const Number can = answer(*now);
  const bool stricter = StrictnessOfChannel(can) > StrictnessOfChannel(answer(row));
  if (stricter && (world.settings.usingPlatform || can == 0)) return Verdict::kMustNot;
  if (!world.settings.onlyOptedIn) return Verdict::kMust;
  if (now->consent != 1) return Verdict::kMustNot;
  const bool agreedToSomething = now->canSms == 1 || now->canEmail == 1 || now->canLetter == 1;
  return world.settings.usingPlatform && !agreedToSomething ? Verdict::kMustNot : Verdict::kMust;
}

void ApplyMethods(std::vector<Row>& rows, const SendMethods& methods, const Settings& settings) {
  const bool ask = settings.usingPlatform && settings.onlyOptedIn;
  for (Row& row : rows) {
    if (row.gone) continue;
    // In this order: a later channel sees the flags that an earlier one got.
    row.sms.wanted = SmsFlag(row, methods.sms, !ask || row.canSms == 1);
    row.mail.wanted = EmailFlag(row, methods.email, !ask || row.canEmail == 1);
    row.letter = LetterFlag(row, methods.letter, !settings.usingPlatform || row.canLetter == 1);
  }
}

}  // namespace qbx::consent
