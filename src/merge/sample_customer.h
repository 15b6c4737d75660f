// The customer that previews and test messages are merged with.

#pragma once

#include "merge/merge_fields.h"

namespace qbx {

/// The values of Mr Hartley and his Vectra.
[[nodiscard]] const MergeValues& SampleMergeValues();

/// His name and address for a letter, five lines separated by CR.
inline constexpr char16_t kSampleNameAddress[] = u"Mr Alan Hartley\r14 Orchard Row\rMilbury\rNorthshire\rMB4 2QT";

}  // namespace qbx
