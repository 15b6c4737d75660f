DECLARE @Highest int = (SELECT max(Customer) FROM Customers);
UPDATE _Keys SET Last_Value = CASE WHEN @Highest > Last_Value THEN @Highest ELSE Last_Value END + Step
OUTPUT inserted.Last_Value AS ID
WHERE Key_Name = 'CUSTOMER';
