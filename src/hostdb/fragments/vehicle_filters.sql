-- The filters on the vehicle or engine v.
AND
-- @include mileage
AND
-- @include year
AND
-- @include model
