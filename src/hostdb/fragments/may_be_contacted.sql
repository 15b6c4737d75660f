-- Conditions on the customer c. A customer who does not meet them is never selected.
AND
-- @include not_opted_out
AND
-- @include marketing_wanted
