-- The engines v, each with its customer c, before the filters, whether or not the customers may be contacted.
FROM Engines v
CROSS JOIN Marketing_Customers c ON c.Customer = v.Customer
WHERE 1 = 1
  -- @include make_filter
