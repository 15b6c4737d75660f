#include "merge/sample_customer.h"

namespace qbx {

const MergeValues& SampleMergeValues() {
  static const MergeValues kSample{.title = QStringLiteral("Mr"),
                                   .firstname = QStringLiteral("Alan"),
                                   .lastname = QStringLiteral("Hartley"),
                                   .contact = QStringLiteral("Mr Hartley"),
                                   .make = QStringLiteral("Vauxhall"),
                                   .model = QStringLiteral("Vectra"),
                                   .regno = QStringLiteral("AB12 CDE"),
                                   .duedate = QStringLiteral("27/03/2009"),
                                   .duetime = {}};
  return kSample;
}

}  // namespace qbx
