-- Deletes one row from the results of its campaign, with its entries in the send journal.
CREATE PROCEDURE proc_delp_Campaign_Results
  @RecordID int
AS
DELETE FROM [Campaign Results] WHERE RecordID = @RecordID;
