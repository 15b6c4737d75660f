-- A condition on the vehicle or engine v: the year. @FromYear is exclusive. @ToYear is inclusive when it stands alone
-- or is @FromYear + 1, and exclusive otherwise. An unknown year meets no bound.
CASE WHEN @FilterYear = 0 OR (@FromYear IS NULL AND @ToYear IS NULL) THEN 1
  WHEN ifnull(v.Year, 0) <= ifnull(@FromYear, 0) THEN 0
  WHEN @ToYear IS NULL OR v.Year < @ToYear THEN 1
  WHEN (@FromYear IS NULL OR @ToYear = @FromYear + 1) AND v.Year = @ToYear THEN 1
  ELSE 0 END = 1
