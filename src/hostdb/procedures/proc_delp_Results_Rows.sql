-- Takes some rows out of the results of a campaign, with what the send journal holds of them. @RecordIDs: keys separated by commas.
CREATE PROCEDURE proc_delp_Results_Rows
  @CampaignID int,
  @RecordIDs nvarchar(max)
AS
DELETE FROM [Campaign Results]
WHERE RecordID IN (SELECT value FROM json_each('[' || @RecordIDs || ']')) AND CampaignID = @CampaignID;
