// The two sample texts that show how merge fields are used.

#pragma once

#include <QString>

namespace qbx {

/// The texts, named as the controls of the page "Examples".
struct TemplateExamples {
  QString lblExample1;
  QString txtExample1;
  QString lblExample2;
  QString txtExample2;
};

[[nodiscard]] TemplateExamples MakeTemplateExamples(bool boatEdition);

}  // namespace qbx
