-- Settles the messages of a campaign, or of one of its rows (@RecordID; 0 all of them), that were begun and have no outcome. @Sent 1: they count
-- as sent, and a row with nothing left to send is marked as processed. @Sent 0: they are forgotten, so that they are due again. What else is on
-- record of a row stays.
CREATE PROCEDURE proc_updp_Send_Journal_Doubt
  @CampaignID int,
  @RecordID int,
  @Sent bit,
  @UserID nvarchar(50)
AS
UPDATE [Campaign Results] SET Processed = 1
WHERE @Sent = 1 AND CampaignID = @CampaignID AND (@RecordID = 0 OR RecordID = @RecordID)
  AND Processed = 0 AND (Send_SMS = 1 OR Send_Email = 1)
  AND RecordID IN (SELECT RecordID FROM Send_Journal WHERE CampaignID = @CampaignID AND State = 0)
  AND (Send_SMS = 0 OR RecordID IN (SELECT RecordID FROM Send_Journal WHERE CampaignID = @CampaignID AND Channel = 1 AND State IN (0, 1)))
  AND (Send_Email = 0 OR RecordID IN (SELECT RecordID FROM Send_Journal WHERE CampaignID = @CampaignID AND Channel = 2 AND State IN (0, 1)));
UPDATE Send_Journal SET State = 1, UserID = @UserID, Changed = GetDate()
WHERE @Sent = 1 AND CampaignID = @CampaignID AND (@RecordID = 0 OR RecordID = @RecordID) AND State = 0;
DELETE FROM Send_Journal
WHERE @Sent = 0 AND CampaignID = @CampaignID AND (@RecordID = 0 OR RecordID = @RecordID) AND State = 0;
