-- The letters of a campaign that were about to appear in a file when the program ended, so that it is not known whether they stand there: RecordID,
-- Letter_File, Changed. A row that was marked by hand since is settled.
CREATE PROCEDURE proc_selp_Letters_In_Doubt
  @CampaignID int
AS
SELECT j.RecordID, j.Reason AS Letter_File, j.Changed
FROM Send_Journal j
JOIN [Campaign Results] r ON r.RecordID = j.RecordID
WHERE j.CampaignID = @CampaignID AND j.Channel = 3 AND j.State = 0 AND j.Reason IS NOT NULL AND r.Processed = 0
ORDER BY j.RecordID;
