-- In a CASE: why the customer c is not selected, the first reason in the order of the filters. The numbers are explained in
-- proc_sel_Left_Out.
WHEN (
  -- @include not_opted_out
) IS NOT TRUE THEN -1
WHEN (
  -- @include marketing_wanted
) IS NOT TRUE THEN 0
WHEN (
  -- @include customer_type
) IS NOT TRUE THEN 1
WHEN (
  -- @include enquiry_source
) IS NOT TRUE THEN 2
