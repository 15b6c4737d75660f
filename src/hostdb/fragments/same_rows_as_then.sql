-- A condition: the campaign is there, and has no newer rows than when some were taken out.
AND (@CampaignID < 0 OR EXISTS (SELECT 1 FROM Marketing_Campaigns WHERE ID = @CampaignID))
AND NOT EXISTS (SELECT 1 FROM [Campaign Results] WHERE CampaignID = @CampaignID AND RecordID > @NewestRow)
