-- Returns the letters of a campaign that were about to go to a file or a printer when the program ended: RecordID,
-- Letter_File, Changed. It is not known whether they did. A row that was since marked as processed by hand is
-- settled and is not returned.
CREATE PROCEDURE proc_selp_Letters_In_Doubt
  @CampaignID int
AS
SELECT j.RecordID, j.Reason AS Letter_File, j.Changed
FROM Send_Journal j
JOIN [Campaign Results] r ON r.RecordID = j.RecordID
WHERE j.CampaignID = @CampaignID AND j.Channel = 3 AND j.State = 0 AND j.Reason IS NOT NULL AND r.Processed = 0
ORDER BY j.RecordID;
