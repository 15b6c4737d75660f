-- The row is locked until the end, so that of two desks only one begins its message. A statement of its own locks it.
-- With READ_COMMITTED_SNAPSHOT a statement reads the journal as it was when the statement began, before it waited for
-- the lock.
DECLARE @Held int;
SELECT @Held = RecordID FROM [Campaign Results] WITH (UPDLOCK) WHERE RecordID = @RecordID AND CampaignID = @CampaignID;
DECLARE @Noted TABLE (RecordID int NOT NULL);
INSERT INTO @Noted (RecordID)
SELECT RecordID
FROM [Campaign Results] WITH (UPDLOCK) WHERE RecordID = @RecordID AND CampaignID = @CampaignID
  -- @include may_be_noted
;
UPDATE Send_Journal SET State = @State, CampaignID = @CampaignID, UserID = @UserID, Changed = GetDate(), Reason = @Reason
WHERE RecordID IN (SELECT RecordID FROM @Noted) AND Channel = @Channel;
IF @@ROWCOUNT = 0
  INSERT INTO Send_Journal (RecordID, Channel, State, CampaignID, UserID, Changed, Reason)
  SELECT RecordID, @Channel, @State, @CampaignID, @UserID, GetDate(), @Reason FROM @Noted;
SELECT RecordID FROM @Noted;
