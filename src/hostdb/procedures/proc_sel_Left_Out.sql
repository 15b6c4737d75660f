-- Counts the rows that a selection leaves out, and why. The parameters are those of the selection; nothing is changed. @RowsOf is what the rows are:
-- 0 customers, 1 vehicles, 2 engines. @Filters 0 counts only who may not be contacted, which is quick.
-- Returned is a row for each reason that occurs, with the number of rows that have it: -1 opted out, 0 "No Marketing", 1 customer type,
-- 2 enquiry source, 3 mileage, 4 year, 5 model; NULL has none. A row counts with its first reason in this order, so that each is a number of those that the
-- reasons before it left. Of a ranking, -1 and 0 are customers with an invoice between the dates.
CREATE PROCEDURE proc_sel_Left_Out
  @RowsOf smallint,
  @Filters bit,
  -- @include selection_parameters
AS
WITH RECURSIVE
-- @include period
,
-- @include makes
,
-- @include ranking
,
Candidates (Reason) AS (
  SELECT CASE
    -- @include customer_reasons
    END
  -- @include customers_of_query
    AND @RowsOf = 0
    AND (@Filters = 1 OR
      -- @include may_not_be_contacted
      )
  UNION ALL
  SELECT CASE
    -- @include customer_reasons
    END
  FROM Marketing_Customers c
  WHERE @RowsOf = 0 AND (@Top = 1 OR @Bottom = 1)
    AND
    -- @include may_not_be_contacted
    AND EXISTS (SELECT 1 FROM Services i WHERE i.Customer = c.Customer AND i.Record_Type = 0
                AND i.Invoice_Date >= (SELECT FirstDay FROM Period) AND i.Invoice_Date < (SELECT DayAfter FROM Period))
  UNION ALL
  -- One selection for customers and vehicles: a ranking that is named twice is worked out for every query.
  -- @include reason_of_row
  FROM Ranked r
  CROSS JOIN Marketing_Customers c ON c.Customer = r.Customer
  LEFT JOIN Vehicles v ON @RowsOf = 1 AND v.Customer = r.Customer
  WHERE @Filters = 1 AND (@Top = 1 OR @Bottom = 1) AND (@RowsOf = 0 OR v.VehicleID IS NOT NULL)
  UNION ALL
  -- @include reason_of_row
  -- @include vehicles_of_query
    AND @RowsOf = 1
    AND (@Filters = 1 OR
      -- @include may_not_be_contacted
      )
  UNION ALL
  -- @include reason_of_row
  -- @include engines_of_query
    AND @RowsOf = 2
    AND (@Filters = 1 OR
      -- @include may_not_be_contacted
      )
)
SELECT Reason, count(*) AS Records FROM Candidates GROUP BY Reason ORDER BY Reason;
