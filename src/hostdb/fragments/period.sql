-- A table of a WITH clause: the days from @FromDate to @ToDate, both included. The dates are texts yyyy-mm-dd and may
-- come in either order. An empty date means no bound on that side.
Period (FirstDay, DayAfter) AS (
  SELECT CASE WHEN trim(@FromDate) <> '' AND trim(@ToDate) <> '' THEN min(@FromDate, @ToDate) ELSE @FromDate END,
    CASE WHEN trim(@ToDate) = '' THEN '9999-12-31'
      WHEN trim(@FromDate) = '' THEN ifnull(date(@ToDate, '+1 day'), '9999-12-31')
      ELSE ifnull(date(max(@FromDate, @ToDate), '+1 day'), '9999-12-31') END
)
