-- A table of a WITH clause: the days between @FromDate and @ToDate, both included. The dates are text yyyy-mm-dd and may come in either
-- order or be empty (no bound on that side).
Period (FirstDay, DayAfter) AS (
  SELECT CASE WHEN trim(@FromDate) <> '' AND trim(@ToDate) <> '' THEN min(@FromDate, @ToDate) ELSE @FromDate END,
    CASE WHEN trim(@ToDate) = '' THEN '9999-12-31'
      WHEN trim(@FromDate) = '' THEN ifnull(date(@ToDate, '+1 day'), '9999-12-31')
      ELSE ifnull(date(max(@FromDate, @ToDate), '+1 day'), '9999-12-31') END
)
