-- The vehicles v, each with its customer c, of every query except a ranking, before the filters, whether or not the
-- customers may be contacted.
FROM (
  SELECT *,
    CASE @Recall_ID WHEN 1 THEN Recall_Date1 WHEN 2 THEN Recall_Date2 WHEN 3 THEN Recall_Date3
      WHEN 4 THEN Recall_Date4 WHEN 5 THEN Recall_Date5 WHEN 6 THEN Recall_Date6 END AS Recall_Date
  FROM Vehicles
) v
CROSS JOIN Marketing_Customers c ON c.Customer = v.Customer
WHERE @Top <> 1 AND @Bottom <> 1
  -- @include make_filter
  AND CASE WHEN @Recall_ID = 0 THEN 1
    WHEN v.Recall_Date >= (SELECT FirstDay FROM Period) AND v.Recall_Date < (SELECT DayAfter FROM Period) THEN 1
    ELSE 0 END = 1
  -- @include lapsed_or_recent
