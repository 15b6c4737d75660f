-- A table of a WITH clause: the days from @FromDate to @ToDate, both included. The dates are texts yyyy-mm-dd and may
-- come in either order. An empty date means no bound on that side. A datetime holds the years from 1753 to 9999.
Period (FirstDay, DayAfter) AS (
  SELECT CONVERT(datetime, CASE WHEN First_Text < '1753-01-01' THEN '1753-01-01' ELSE First_Text END, 120),
    DATEADD(day, 1, CONVERT(datetime, CASE WHEN Last_Text < '1753-01-01' THEN '1753-01-01' WHEN Last_Text > '9999-12-30' THEN '9999-12-30'
      ELSE Last_Text END, 120))
  FROM (
    SELECT CASE WHEN ltrim(rtrim(@ToDate)) <> '' AND @ToDate < @FromDate THEN @ToDate ELSE @FromDate END AS First_Text,
      CASE WHEN ltrim(rtrim(@ToDate)) = '' THEN '9999-12-30' WHEN @FromDate > @ToDate THEN @FromDate ELSE @ToDate END AS Last_Text
  ) bounds
)
