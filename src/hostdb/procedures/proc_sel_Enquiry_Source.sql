-- The enquiry sources by name. Columns RecordID and Description.
CREATE PROCEDURE proc_sel_Enquiry_Source
AS
SELECT Enquiry_Source_ID AS RecordID, Description FROM Enquiry_Sources ORDER BY Description;
