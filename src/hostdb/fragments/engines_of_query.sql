-- The engines v, each with its customer c, whoever may be contacted, before the filters.
FROM Engines v
CROSS JOIN Marketing_Customers c ON c.Customer = v.Customer
WHERE 1 = 1
  -- @include make_filter
