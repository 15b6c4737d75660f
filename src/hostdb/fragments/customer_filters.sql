-- The filters on the customer c.
AND
-- @include customer_type
AND
-- @include enquiry_source
