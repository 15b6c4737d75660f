-- Why the row of customer c and vehicle or engine v is not selected.
SELECT CASE
  -- @include customer_reasons
  -- @include vehicle_reasons
END
