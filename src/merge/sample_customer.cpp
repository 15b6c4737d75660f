#include "merge/sample_customer.h"

namespace qbx {

const MergeValues& SampleMergeValues() {
  static const MergeValues kSample{.title = u"Mr"_qs,
                                   .firstname = u"Alan"_qs,
                                   .lastname = u"Hartley"_qs,
                                   .contact = u"Mr Hartley"_qs,
                                   .make = u"Vauxhall"_qs,
                                   .model = u"Vectra"_qs,
                                   .regno = u"AB12 CDE"_qs,
                                   .duedate = u"27/03/2009"_qs,
                                   .duetime = {}};
  return kSample;
}

}  // namespace qbx
