-- Returns the columns of some rows of a campaign that a change of flags can alter. @RecordIDs holds the keys of the
-- rows, separated by commas. A row that is gone is not returned.
CREATE PROCEDURE proc_selp_Results_Flags
  @CampaignID int,
  @RecordIDs nvarchar(max)
AS
SELECT r.RecordID, r.Send_SMS, r.Send_Email, r.Send_Letter, r.Processed, r.Processed_Date
FROM json_each('[' || @RecordIDs || ']') k
CROSS JOIN [Campaign Results] r ON r.RecordID = k.value
WHERE r.CampaignID = @CampaignID;
