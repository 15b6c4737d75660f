-- A condition on the customer c. Lapsed: an invoice before the period and none in it. Recent: an invoice in the period.
AND CASE WHEN @Lapsed = 1 THEN
    CASE WHEN EXISTS (SELECT 1 FROM Services i WHERE i.Customer = c.Customer AND i.Record_Type = 0
                      AND i.Invoice_Date < (SELECT FirstDay FROM Period))
      AND NOT EXISTS (SELECT 1 FROM Services i WHERE i.Customer = c.Customer AND i.Record_Type = 0
                      AND i.Invoice_Date >= (SELECT FirstDay FROM Period) AND i.Invoice_Date < (SELECT DayAfter FROM Period))
      THEN 1 ELSE 0 END
  WHEN @Recent = 1 THEN
    CASE WHEN EXISTS (SELECT 1 FROM Services i WHERE i.Customer = c.Customer AND i.Record_Type = 0
                      AND i.Invoice_Date >= (SELECT FirstDay FROM Period) AND i.Invoice_Date < (SELECT DayAfter FROM Period))
      THEN 1 ELSE 0 END
  ELSE 1 END = 1
