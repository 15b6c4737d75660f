-- Returns the customer types, ordered by name: RecordID and Description.
CREATE PROCEDURE proc_sel_Customer_Types
AS
SELECT Customer_Type_ID AS RecordID, Description FROM Customer_Types ORDER BY Description;
