-- Settles the text messages and e-mails of a campaign that were begun and have no outcome. @RecordID names the row they
-- belong to, 0 means all rows. With @Sent 1 they count as sent, and a row with nothing left to send is marked as
-- processed. With @Sent 0 their entries are deleted, so that they are due again. All other entries of a row stay.
CREATE PROCEDURE proc_updp_Send_Journal_Doubt
  @CampaignID int,
  @RecordID int,
  @Sent bit,
  @UserID nvarchar(50)
AS
-- The rows are given as a range of keys, so that one row costs one look-up and not a pass through the campaign.
UPDATE [Campaign Results] SET Processed = 1
WHERE @Sent = 1 AND CampaignID = @CampaignID
  AND RecordID BETWEEN CASE @RecordID WHEN 0 THEN 1 ELSE @RecordID END AND CASE @RecordID WHEN 0 THEN 2147483647 ELSE @RecordID END
  AND Processed = 0 AND (Send_SMS = 1 OR Send_Email = 1)
  AND EXISTS (SELECT 1 FROM Send_Journal j WHERE j.RecordID = [Campaign Results].RecordID AND j.Channel IN (1, 2) AND j.State = 0)
  AND (Send_SMS = 0 OR EXISTS (
    SELECT 1 FROM Send_Journal j WHERE j.RecordID = [Campaign Results].RecordID AND j.Channel = 1 AND j.State IN (0, 1)))
  AND (Send_Email = 0 OR EXISTS (
    SELECT 1 FROM Send_Journal j WHERE j.RecordID = [Campaign Results].RecordID AND j.Channel = 2 AND j.State IN (0, 1)));
UPDATE Send_Journal SET State = 1, UserID = @UserID, Changed = GetDate()
WHERE @Sent = 1 AND CampaignID = @CampaignID AND Channel IN (1, 2) AND State = 0
  AND RecordID BETWEEN CASE @RecordID WHEN 0 THEN 1 ELSE @RecordID END AND CASE @RecordID WHEN 0 THEN 2147483647 ELSE @RecordID END;
DELETE FROM Send_Journal
WHERE @Sent = 0 AND CampaignID = @CampaignID AND Channel IN (1, 2) AND State = 0
  AND RecordID BETWEEN CASE @RecordID WHEN 0 THEN 1 ELSE @RecordID END AND CASE @RecordID WHEN 0 THEN 2147483647 ELSE @RecordID END;
