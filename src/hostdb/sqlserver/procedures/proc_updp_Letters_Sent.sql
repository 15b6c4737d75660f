DECLARE @Held TABLE (RecordID int NOT NULL);
INSERT INTO @Held (RecordID)
SELECT RecordID FROM [Campaign Results] WITH (UPDLOCK) WHERE CampaignID = @CampaignID AND RecordID IN (SELECT value FROM json_each('[' || @Rows || ']'));
UPDATE Send_Journal SET State = 1, CampaignID = @CampaignID, UserID = @UserID, Changed = GetDate(), Reason = NULL
WHERE Channel = 3 AND RecordID IN (SELECT RecordID FROM @Held);
INSERT INTO Send_Journal (RecordID, Channel, State, CampaignID, UserID, Changed)
SELECT h.RecordID, 3, 1, @CampaignID, @UserID, GetDate()
FROM @Held h WHERE NOT EXISTS (SELECT 1 FROM Send_Journal j WHERE j.RecordID = h.RecordID AND j.Channel = 3);
SELECT RecordID FROM @Held;
