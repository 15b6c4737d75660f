-- A condition on the vehicle or engine v: one bound alone is exclusive, two are inclusive. A mileage that is not known meets no bound.
CASE WHEN @FilterMileage = 0 OR (@FromMileage IS NULL AND @ToMileage IS NULL) THEN 1
  WHEN @ToMileage IS NULL THEN v.Last_Mileage > @FromMileage
  WHEN @FromMileage IS NULL THEN v.Last_Mileage < @ToMileage
  ELSE v.Last_Mileage BETWEEN @FromMileage AND @ToMileage END
