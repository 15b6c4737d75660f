-- How many letters of a campaign went out (Made), and how many customers get none because the mailshot processed their row first (By_Mailshot).
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
