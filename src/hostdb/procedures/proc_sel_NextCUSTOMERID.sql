-- The key for a new customer: one row, one column. Counts up and passes over keys that were given in another way.
CREATE PROCEDURE proc_sel_NextCUSTOMERID
AS
UPDATE _Keys SET Last_Value = max(Last_Value, ifnull((SELECT max(Customer) FROM Customers), 0)) + Step
WHERE Key_Name = 'CUSTOMER' RETURNING Last_Value AS ID;
