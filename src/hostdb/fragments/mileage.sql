-- A condition on the vehicle or engine v: the mileage. A bound that stands alone is exclusive, two bounds are
-- inclusive. An unknown mileage meets no bound.
CASE WHEN @FilterMileage = 0 OR (@FromMileage IS NULL AND @ToMileage IS NULL) THEN 1
  WHEN @ToMileage IS NULL AND v.Last_Mileage > @FromMileage THEN 1
  WHEN @FromMileage IS NULL AND v.Last_Mileage < @ToMileage THEN 1
  WHEN v.Last_Mileage BETWEEN @FromMileage AND @ToMileage THEN 1
  ELSE 0 END = 1
