UPDATE Campaign_Claims SET LastSeen = GetUtcDate()
OUTPUT inserted.CampaignID
WHERE CampaignID = @CampaignID AND Computer = @Computer AND ProcessID = @ProcessID AND ProcessStart = @ProcessStart;
