-- A table of a WITH clause, after the period: the top or bottom spenders among the customers who may be contacted.
-- These are @Criteria customers, from place @CriteriaStart on. They are ordered by the sum of their invoices in the
-- period, and by their key when the sums are equal.
Ranked (Customer, Position) AS (
  SELECT i.Customer, round(sum(i.Total), 4) * CASE WHEN @Top = 1 THEN -1 ELSE 1 END AS Position
  FROM Services i
  WHERE i.Record_Type = 0
    AND i.Invoice_Date >= (SELECT FirstDay FROM Period) AND i.Invoice_Date < (SELECT DayAfter FROM Period)
    AND EXISTS (SELECT 1 FROM Customers c WHERE c.Customer = i.Customer
                -- @include may_be_contacted
                )
  GROUP BY i.Customer
  ORDER BY Position, i.Customer
  LIMIT max(CAST(@Criteria AS int), 0) OFFSET max(CAST(@CriteriaStart AS int), 1) - 1
)
