-- Returns the enquiry sources, ordered by name: RecordID and Description.
CREATE PROCEDURE proc_sel_Enquiry_Source
AS
SELECT Enquiry_Source_ID AS RecordID, Description FROM Enquiry_Sources ORDER BY Description;
