-- Counts the rows that a selection leaves out, by reason. The parameters are those of the selection. Nothing is
-- changed. @RowsOf says what a row is: 0 a customer, 1 a vehicle, 2 an engine. With @Filters 0 only those who may not
-- be contacted are counted, which is quick.
-- Returns a row for each reason that occurs, with the number of rows that have it. -1 is opted out, 0 "No Marketing",
-- 1 customer type, 2 enquiry source, 3 mileage, 4 year, 5 model. NULL means no reason: the row is selected. A row
-- counts under its first reason in this order only. So the number of a reason counts rows to which no earlier reason
-- applies. In a ranking, -1 and 0 count customers with an invoice in the period.
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
  -- Customers and vehicles share this selection, so that Ranked is named once. A ranking that is named twice is worked
  -- out even for a query that needs none.
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
