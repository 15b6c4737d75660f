-- Takes one row out of the results of its campaign, with what the send journal holds of it.
CREATE PROCEDURE proc_delp_Campaign_Results
  @RecordID int
AS
DELETE FROM [Campaign Results] WHERE RecordID = @RecordID;
