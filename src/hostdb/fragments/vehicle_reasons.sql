-- In a CASE, behind the reasons of the customer: why the vehicle or engine v is not selected.
WHEN (
  -- @include mileage
) IS NOT TRUE THEN 3
WHEN (
  -- @include year
) IS NOT TRUE THEN 4
WHEN (
  -- @include model
) IS NOT TRUE THEN 5
