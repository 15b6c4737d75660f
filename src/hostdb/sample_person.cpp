#include "hostdb/sample_person.h"

#include <cstdio>
#include <string_view>

namespace qbx {

namespace {

constexpr std::string_view kMen[] = {"Alan",   "Brian",  "Colin",  "David",   "Edward", "Frank",  "George", "Harry",
                                     "Ian",    "James",  "Kevin",  "Liam",    "Mark",   "Nathan", "Oliver", "Patrick",
                                     "Robert", "Samuel", "Thomas", "William", "Arjun",  "Imran",  "Kwame",  "Marek",
                                     "Owen",   "Rhys",   "Callum", "Hamish",  "Tariq",  "Yusuf"};
constexpr std::string_view kWomen[] = {"Alice",  "Beth",  "Carol",  "Diane",  "Emma",    "Fiona",   "Grace",  "Helen",
                                       "Isla",   "Jane",  "Karen",  "Laura",  "Megan",   "Nicola",  "Olivia", "Priya",
                                       "Rachel", "Sarah", "Tracey", "Wendy",  "Aisha",   "Bronwen", "Chloe",  "Ewa",
                                       "Morag",  "Nadia", "Sian",   "Shreya", "Yetunde", "Zara"};
constexpr std::string_view kSurnames[] = {
    "Hartley",    "Jones",         "Smith",    "Taylor",      "Brown",        "Williams",   "Wilson",    "Johnson",
    "Davies",     "Patel",         "Wright",   "Walker",      "White",        "Edwards",    "Green",     "Hall",
    "Wood",       "Harris",        "Lewis",    "Martin",      "Jackson",      "Clarke",     "Turner",    "Hill",
    "Cooper",     "Morris",        "Ward",     "Moore",       "King",         "Watson",     "Baker",     "Harrison",
    "Morgan",     "Young",         "Allen",    "Mitchell",    "Parker",       "Cook",       "Bailey",    "Shah",
    "Kaur",       "Hussain",       "Begum",    "Kowalski",    "Okafor",       "MacLeod",    "McBride",   "Pritchard",
    "Llewellyn",  "Fothergill",    "Ashworth", "Bickerstaff", "Cholmondeley", "Drinkwater", "Entwistle", "Featherstone",
    "Gathercole", "Hollingsworth", "Ingham",   "Kershaw"};
constexpr std::string_view kStreets[] = {"Orchard", "Station", "Church", "Mill",     "Park",   "Victoria",
                                         "Green",   "Kings",   "Queens", "Manor",    "School", "Albert",
                                         "Grange",  "Meadow",  "Chapel", "Priory",   "Bridge", "Hawthorn",
                                         "Linden",  "Castle",  "Abbey",  "Fountain", "Quarry", "Windmill"};
constexpr std::string_view kStreetKinds[] = {"Road",  "Street", "Lane", "Avenue",  "Close",
                                             "Drive", "Row",    "Way",  "Gardens", "Terrace"};
constexpr std::string_view kHouses[] = {"Rose Cottage", "The Old Forge", "Mill House",
                                        "Hillcrest",    "The Laurels",   "Woodside"};

struct Town {
  std::string_view name;
  std::string_view county;
  std::string_view postcode;  ///< area letters that the post does not use
};
constexpr Town kTowns[] = {{"Milbury", "Northshire", "MB"},        {"Ashcombe Vale", "Northshire", "AV"},
                           {"Thornwick", "Northshire", "TX"},      {"Little Marden", "Eastmoor", "LM"},
                           {"Harrowgate Cross", "Eastmoor", "HC"}, {"Stanbridge", "Eastmoor", "SB"},
                           {"Kelsey Bay", "Southmere", "KB"},      {"Portwick", "Southmere", "PW"},
                           {"Dunhallow", "Westdale", "DW"},        {"Upper Fenton", "Westdale", "UF"}};
constexpr std::string_view kTrades[] = {"Plumbing", "Builders",   "Catering", "Landscapes",
                                        "Taxis",    "Electrical", "Bakery",   "Removals"};
constexpr std::string_view kDomains[] = {"example.com", "example.org", "example.net"};

template <typename... Parts>
std::string Join(const Parts&... parts) {
  std::string text;
  (text.append(parts), ...);
  return text;
}

std::string Digits(int number, int width) {
  char text[16];
  const int length = std::snprintf(text, sizeof text, "%0*d", width, number);
  return {text, static_cast<std::size_t>(length)};
}

std::string LowerAscii(std::string_view text) {
  std::string lower(text);
  for (char& c : lower)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  return lower;
}

void GiveAddress(SamplePerson& person, RandomSource& random) {
  constexpr std::string_view kInward = "ABDEFGHJLNPQRSTUWXYZ";
  const Town& town = random.Pick(kTowns);
  std::string first =
      Join(std::to_string(random.Between(1, 180)), " ", random.Pick(kStreets), " ", random.Pick(kStreetKinds));
  if (random.Chance(8)) first = Join(random.Pick(kHouses), "\r", first);
  person.address = Join(first, "\r", town.name, "\r", town.county);
  person.postcode =
      Join(town.postcode, std::to_string(random.Between(1, 29)), " ", std::to_string(random.Between(1, 9)));
  person.postcode += random.Pick(kInward);
  person.postcode += random.Pick(kInward);
}

void GiveConsent(SamplePerson& person, RandomSource& random) {
  const int answer = random.Between(0, 99);
  if (answer < 64)
    person.consent = 1;
  else if (answer < 74)
    person.consent = 0;
  else if (answer < 81)
    person.consent = 2;
  person.noMarketing = random.Chance(5);
  for (std::optional<int>* choice : {&person.canSendSms, &person.canSendEmail, &person.canSendLetter}) {
    const int chosen = random.Between(0, 99);
    if (chosen < 75)
      *choice = person.consent == 2 ? 0 : 1;
    else if (chosen < 88)
      *choice = 0;
  }
}

/// What is awkward about a customer. Texts are UTF-8.
struct Awkward {
  std::string_view firstname = {};
  std::string_view lastname = {};
  std::string_view company = {};
  std::string_view contact = {};
  std::string_view mobile = {};
  std::string_view email = {};
  std::string_view address = {};
  bool companyOnly = false;  ///< the customer has no person's name
};
constexpr Awkward kAwkward[] = {
    // Recipients that the sandbox refuses: the first kFailingKinds.
    {.mobile = "07700900902"},
    {.mobile = "07700900903"},
    {.mobile = "07700900922"},
    {.mobile = "07700900931"},
    {.mobile = "07700900933"},
    {.email = "refused@example.com"},
    {.email = "tempfail@example.com"},
    {.email = "nodata@example.com"},
    // Names.
    {.firstname = "D'Arcy", .lastname = "O'Brien"},
    {.lastname = "Smith \"Smithy\""},
    {.firstname = "Zo\u00eb", .lastname = "N\u00fa\u00f1ez-Garc\u00eda"},
    {.firstname = "J\u00f6rg", .lastname = "M\u00fcller-Wei\u00df"},
    {.company = "Pound & Euro (\u00a31 = \u20ac1.15) Ltd", .contact = "Mr \u00a3 Price", .companyOnly = true},
    {.firstname = "Sunny \u2600\ufe0f", .lastname = "Rider \U0001F697\U0001F468\u200D\U0001F527"},
    {.firstname = "\u5c71\u7530", .lastname = "\u0645\u062d\u0645\u062f"},
    {.lastname = "<b>Bold</b>", .company = "<script>alert('hello')</script>"},
    {.firstname = "Robert'); DROP TABLE Customers;--", .lastname = "' OR '1'='1"},
    {.lastname = "=1+1", .company = "+HYPERLINK(\"http://example.com\",\"click\")"},
    {.firstname = "Anne\r\nMarie", .lastname = "Two\nLines"},
    {.firstname = "Tab\there", .lastname = "  Blanks  "},
    {.lastname = "{lastname}", .contact = "Mr {contact} of {make}"},
    {.lastname = "Back\\slash{Brace}", .company = "{\\rtf1 Ltd}"},
    {.lastname = "100% of_them", .address = "Flat 12\rThe Old Maltings\r3 Brewery Yard\rMilbury\rNorthshire"},
    // Mobile numbers.
    {.mobile = "07700 900 123"},
    {.mobile = "07700 900124/wife's"},
    {.mobile = "07700900125 (work only)"},
    {.mobile = "MOB 07700900127"},
    {.mobile = "+44 7700 900128"},
    {.mobile = "07700900129;07700900130"},
    {.mobile = "07700"},
    {.mobile = "01632 960555"},
    // Mail addresses.
    {.email = "no.at.sign.example.com"},
    {.email = "@example.com"},
    {.email = "one.of.two@example.com;two.of.two@example.net"},
    {.email = "first@example.com; ;third@example.org"},
    {.email = "with a blank@example.com"},
    {.email = "j\u00f6rg@example.com"},
    {.email = "one@example.com\r\nBcc: another@example.com"},
};
constexpr int kLongTexts = static_cast<int>(std::size(kAwkward));
constexpr int kNothingKnown = kLongTexts + 1;

void Replace(std::string& text, std::string_view by) {
  if (!by.empty()) text = by;
}

void MakeLong(SamplePerson& person) {
  person.lastname = "Llanfairpwllgwyngyll-";
  while (person.lastname.size() < 95)
    person.lastname += "ap-";
  person.lastname += "Rhys";
  person.address.clear();
  for (int line = 1; line <= 20; ++line)
    person.address += Join("Line ", Digits(line, 2), " of a long address\r");
  person.address += "Milbury";
}

}  // namespace

SamplePerson MakePerson(RandomSource& random, int customer) {
  constexpr std::string_view kMenTitles[] = {"Mr", "Mr", "Mr", "Mr", "Dr", "Rev"};
  constexpr std::string_view kWomenTitles[] = {"Mrs", "Mrs", "Ms", "Miss", "Dr"};
  SamplePerson person;
  const bool woman = random.Chance(50);
  person.title = woman ? random.Pick(kWomenTitles) : random.Pick(kMenTitles);
  person.firstname = woman ? random.Pick(kWomen) : random.Pick(kMen);
  person.lastname = random.Pick(kSurnames);
  if (random.Chance(9))
    person.company = Join(person.lastname, " ", random.Pick(kTrades), random.Chance(50) ? " Ltd" : "");
  if (random.Chance(10)) person.contact = person.firstname;
  GiveAddress(person, random);
  if (random.Chance(60)) person.telephone = Join("01632 960", Digits(random.Between(0, 999), 3));
  if (random.Chance(86)) person.mobile = Join("07700", "900", Digits(random.Between(0, 899), 3));
  if (random.Chance(78))
    person.email = Join(LowerAscii(person.firstname), ".", LowerAscii(person.lastname), std::to_string(customer), "@",
                        random.Pick(kDomains));
  GiveConsent(person, random);
  return person;
}

int AwkwardKinds() {
  return kNothingKnown + 1;
}

void MakeAwkward(SamplePerson& person, int kind) {
  if (kind < kLongTexts) {
    const Awkward& awkward = kAwkward[kind];
    Replace(person.firstname, awkward.firstname);
    Replace(person.lastname, awkward.lastname);
    Replace(person.company, awkward.company);
    Replace(person.contact, awkward.contact);
    Replace(person.mobile, awkward.mobile);
    Replace(person.email, awkward.email);
    Replace(person.address, awkward.address);
    if (awkward.companyOnly) person.title = person.firstname = person.lastname = "";
  } else if (kind == kLongTexts) {
    MakeLong(person);
  } else {
    person = SamplePerson();
  }
  person.noMarketing = false;
  person.consent = person.canSendSms = person.canSendEmail = person.canSendLetter = 1;
}

}  // namespace qbx
