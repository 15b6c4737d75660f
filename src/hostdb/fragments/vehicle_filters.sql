-- Conditions on the vehicle or engine v.
-- Mileage: one bound alone is exclusive, two are inclusive. Year: @FromYear is exclusive; @ToYear is inclusive when it stands alone or is
-- @FromYear + 1, else exclusive. A vehicle whose mileage or year is not known meets no bound. Model: contains, without regard to case.
AND CASE WHEN @FilterMileage = 0 OR (@FromMileage IS NULL AND @ToMileage IS NULL) THEN 1
  WHEN @ToMileage IS NULL THEN v.Last_Mileage > @FromMileage
  WHEN @FromMileage IS NULL THEN v.Last_Mileage < @ToMileage
  ELSE v.Last_Mileage BETWEEN @FromMileage AND @ToMileage END
AND CASE WHEN @FilterYear = 0 OR (@FromYear IS NULL AND @ToYear IS NULL) THEN 1
  WHEN ifnull(v.Year, 0) <= ifnull(@FromYear, 0) THEN 0
  WHEN @ToYear IS NULL THEN 1
  WHEN @FromYear IS NULL OR @ToYear = @FromYear + 1 THEN v.Year <= @ToYear
  ELSE v.Year < @ToYear END
AND CASE WHEN @FilterModel = 0 THEN 1 ELSE CharIndex(trim(@ValueModel), v.Model) > 0 END
