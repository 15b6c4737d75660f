DECLARE @Marked TABLE (RecordID int NOT NULL);
UPDATE [Campaign Results] SET Processed = 1
OUTPUT inserted.RecordID INTO @Marked
WHERE CampaignID = @CampaignID AND Send_Letter = 1 AND Send_SMS = 0 AND Send_Email = 0 AND Processed = 0
  AND RecordID IN (SELECT RecordID FROM Send_Journal WHERE CampaignID = @CampaignID AND Channel = 3 AND State = 1);
SELECT RecordID FROM @Marked;
