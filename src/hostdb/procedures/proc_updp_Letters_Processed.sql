-- Marks rows of a campaign as processed when they ask for a letter only and the letter went out. Returns their keys.
CREATE PROCEDURE proc_updp_Letters_Processed
  @CampaignID int
AS
UPDATE [Campaign Results] SET Processed = 1
WHERE CampaignID = @CampaignID AND Send_Letter = 1 AND Send_SMS = 0 AND Send_Email = 0 AND Processed = 0
  AND RecordID IN (SELECT RecordID FROM Send_Journal WHERE CampaignID = @CampaignID AND Channel = 3 AND State = 1)
RETURNING RecordID;
