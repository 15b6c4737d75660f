-- Returns the key for a new customer in one row with one column. Keys count up. A new key is above the keys that were
-- given in another way.
CREATE PROCEDURE proc_sel_NextCUSTOMERID
AS
UPDATE _Keys SET Last_Value = max(Last_Value, ifnull((SELECT max(Customer) FROM Customers), 0)) + Step
WHERE Key_Name = 'CUSTOMER' RETURNING Last_Value AS ID;
