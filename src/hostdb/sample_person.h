// The customers of the sample garage.

#pragma once

#include <optional>
#include <string>

#include "hostdb/random_source.h"

namespace qbx {

/// A made-up customer. Empty text is stored as NULL.
struct SamplePerson {
  std::string title;
  std::string firstname;
  std::string lastname;
  std::string company;
  std::string contact;
  std::string address;  ///< lines separated by CR, without the postcode
  std::string postcode;
  std::string telephone;
  std::string mobile;
  std::string email;
  bool noMarketing = false;
  std::optional<int> consent;
  std::optional<int> canSendSms;
  std::optional<int> canSendEmail;
  std::optional<int> canSendLetter;
};

/// An ordinary customer. Mobile numbers lie between 07700 900000 and 07700 900899, telephone numbers in 01632 960, mail
/// addresses in the example domains. None of them can belong to a real person.
/// \param customer  the key; makes mail addresses unique
[[nodiscard]] SamplePerson MakePerson(RandomSource& random, int customer);

/// How many ways of being awkward there are. The first kFailingKinds of them are recipients that the sandbox refuses.
inline constexpr int kFailingKinds = 8;
[[nodiscard]] int AwkwardKinds();

/// Turns an ordinary customer into an awkward one, who has consented to everything so that no rule hides them.
/// \param kind  0 to AwkwardKinds() - 1
void MakeAwkward(SamplePerson& person, int kind);

}  // namespace qbx
