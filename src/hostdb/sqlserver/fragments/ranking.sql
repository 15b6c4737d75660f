-- A table of a WITH clause, after the period: the top or bottom spenders among the customers who may be contacted.
-- These are @Criteria customers, from place @CriteriaStart on. They are ordered by the sum of their invoices in the
-- period, and by their key when the sums are equal.
Ranked (Customer, Position) AS (
  SELECT Customer, Position
  FROM (
    SELECT Customer, Position, ROW_NUMBER() OVER (ORDER BY Position, Customer) - CASE WHEN @CriteriaStart > 2147483647 THEN 2147483647 WHEN @CriteriaStart >= 1 THEN CAST(@CriteriaStart AS int) ELSE 1 END AS Place
    FROM (
      SELECT i.Customer, sum(i.Total) * CASE WHEN @Top = 1 THEN -1 ELSE 1 END AS Position
      FROM Services i
      WHERE i.Record_Type = 0
        AND i.Invoice_Date >= (SELECT FirstDay FROM Period) AND i.Invoice_Date < (SELECT DayAfter FROM Period)
        AND EXISTS (SELECT 1 FROM Customers c WHERE c.Customer = i.Customer
                    -- @include may_be_contacted
                    )
      GROUP BY i.Customer
    ) totals
  ) placed
  WHERE Place >= 0 AND Place < CASE WHEN @Criteria > 2147483647 THEN 2147483647 WHEN @Criteria >= 1 THEN CAST(@Criteria AS int) ELSE 0 END
)
