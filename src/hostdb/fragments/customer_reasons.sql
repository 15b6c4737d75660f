-- In a CASE: why the customer c is not selected. The first reason in the order of the filters counts. proc_sel_Left_Out
-- explains the numbers.
WHEN CASE WHEN (
  -- @include not_opted_out
) THEN 1 ELSE 0 END = 0 THEN -1
WHEN CASE WHEN (
  -- @include marketing_wanted
) THEN 1 ELSE 0 END = 0 THEN 0
WHEN CASE WHEN (
  -- @include customer_type
) THEN 1 ELSE 0 END = 0 THEN 1
WHEN CASE WHEN (
  -- @include enquiry_source
) THEN 1 ELSE 0 END = 0 THEN 2
