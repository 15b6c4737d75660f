-- In a CASE, after the reasons of the customer: why the vehicle or engine v is not selected.
WHEN CASE WHEN (
  -- @include mileage
) THEN 1 ELSE 0 END = 0 THEN 3
WHEN CASE WHEN (
  -- @include year
) THEN 1 ELSE 0 END = 0 THEN 4
WHEN CASE WHEN (
  -- @include model
) THEN 1 ELSE 0 END = 0 THEN 5
