-- A table of a WITH clause: the days between @FromDate and @ToDate, both included. The dates are text yyyy-mm-dd and
-- may come in either order or be empty (no bound on that side).
Period (FirstDay, DayAfter) AS (
  SELECT
    CONVERT(datetime, CASE WHEN ltrim(rtrim(@FromDate)) = '' THEN '1753-01-01'
      WHEN ltrim(rtrim(@ToDate)) <> '' AND @ToDate < @FromDate THEN @ToDate
      ELSE @FromDate END, 120),
    CASE WHEN ltrim(rtrim(@ToDate)) = '' THEN CONVERT(datetime, '9999-12-31', 120)
      ELSE DATEADD(day, 1, CONVERT(datetime, CASE WHEN @FromDate > @ToDate THEN @FromDate ELSE @ToDate END, 120)) END
)
