-- The customer types by name. Columns RecordID and Description.
CREATE PROCEDURE proc_sel_Customer_Types
AS
SELECT Customer_Type_ID AS RecordID, Description FROM Customer_Types ORDER BY Description;
