#include "wizard/template_examples.h"

#include "util/boat_wording.h"

namespace qbx {
namespace {

/// The beginning of both texts: the greeting, and the date far to its right.
QString Opening() {
  constexpr int kBlanks = 60;
  return QStringLiteral("Dear {contact}") + QString(kBlanks, QLatin1Char(' ')) + QStringLiteral("{currentdate}\n\n");
}

}  // namespace

TemplateExamples MakeTemplateExamples(bool boatEdition) {
  TemplateExamples examples{
      .lblExample1 = QStringLiteral(
          "For Customer specific Mail Merges there is no vehicle data available for the letters but you could personalise the letter or SMS/Email. Example:"),
      .txtExample1 =
          Opening() +
          QStringLiteral("We wanted to let you know we are offering a free winter check for a limited period..."),
      .lblExample2 = QStringLiteral(
          "For Vehicle specific Mail Merges you can use vehicle data as part of the letters to personalise the letter or SMS/Email. Example:"),
      .txtExample2 =
          Opening() +
          QStringLiteral(
              "We wanted to let you know that according to our records, your vehicle {make} {model} with Rego No {regno} may be due for a cambelt replacement in the next few months. Please call us to book in for this important work.")};
  if (!boatEdition) return examples;
  for (QString* text : {&examples.lblExample1, &examples.lblExample2, &examples.txtExample2})
    *text = BoatWording(*text);
  examples.txtExample2.remove(QStringLiteral(" with Rego No {regno}"));
  examples.txtExample2.replace(QStringLiteral("cambelt"), QStringLiteral("service"));
  return examples;
}

}  // namespace qbx
