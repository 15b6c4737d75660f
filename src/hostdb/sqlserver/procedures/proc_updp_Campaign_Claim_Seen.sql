UPDATE Campaign_Claims SET LastSeen = GetDate()
OUTPUT inserted.CampaignID
WHERE CampaignID = @CampaignID AND Computer = @Computer AND ProcessID = @ProcessID AND ProcessStart = @ProcessStart;
