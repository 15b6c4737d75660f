-- Conditions on the customer c, without which nobody is selected.
AND
-- @include not_opted_out
AND
-- @include marketing_wanted
