-- Clears what the send journal holds of a results row.
CREATE PROCEDURE proc_delp_Send_Journal
  @RecordID int
AS
DELETE FROM Send_Journal WHERE RecordID = @RecordID;
