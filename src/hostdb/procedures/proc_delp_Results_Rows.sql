-- Deletes some rows from the results of a campaign, with their entries in the send journal. @RecordIDs holds the keys
-- of the rows, separated by commas.
CREATE PROCEDURE proc_delp_Results_Rows
  @CampaignID int,
  @RecordIDs nvarchar(max)
AS
DELETE FROM [Campaign Results]
WHERE RecordID IN (SELECT value FROM json_each('[' || @RecordIDs || ']')) AND CampaignID = @CampaignID;
