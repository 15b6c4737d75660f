UPDATE Campaign_Claims SET
  UserID = @UserID, Computer = @Computer, ProcessID = @ProcessID, ProcessStart = @ProcessStart, Claimed = GetDate(), LastSeen = GetUtcDate()
WHERE CampaignID = @CampaignID;
IF @@ROWCOUNT = 0
  INSERT INTO Campaign_Claims (CampaignID, UserID, Computer, ProcessID, ProcessStart, Claimed, LastSeen)
  VALUES (@CampaignID, @UserID, @Computer, @ProcessID, @ProcessStart, GetDate(), GetUtcDate());
