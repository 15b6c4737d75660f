-- The customers c of "All", "Lapsed" and "Recent Customers" before the filters, whether or not they may be contacted.
FROM Marketing_Customers c
WHERE @Top <> 1 AND @Bottom <> 1
  -- @include lapsed_or_recent
