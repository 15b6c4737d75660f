-- Returns two counts of a campaign in one row. Made is the number of letters that went out. By_Mailshot is the number
-- of customers who get no letter because the mailshot processed their row first.
CREATE PROCEDURE proc_selp_Letter_Counts
  @CampaignID int
AS
SELECT
  (SELECT Count(1) FROM [Campaign Results] r
   WHERE r.CampaignID = @CampaignID AND r.Send_Letter = 1
     AND ((r.Processed = 1 AND r.Send_SMS = 0 AND r.Send_Email = 0)
          OR EXISTS (SELECT 1 FROM Send_Journal j WHERE j.RecordID = r.RecordID AND j.Channel = 3 AND j.State = 1))) AS Made,
  (SELECT Count(1) FROM [Campaign Results] r
   WHERE r.CampaignID = @CampaignID AND r.Send_Letter = 1 AND r.Processed = 1 AND (r.Send_SMS = 1 OR r.Send_Email = 1)
     AND NOT EXISTS (SELECT 1 FROM Send_Journal j WHERE j.RecordID = r.RecordID AND j.Channel = 3 AND j.State = 1)) AS By_Mailshot;
