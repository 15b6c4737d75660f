-- The customers c of "All", "Lapsed" and "Recent Customers", whoever may be contacted, before the filters.
FROM Marketing_Customers c
WHERE @Top <> 1 AND @Bottom <> 1
  -- @include lapsed_or_recent
