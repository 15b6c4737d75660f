-- A condition: the campaign was not deleted, and has no row newer than @NewestRow, its newest row when some were
-- deleted.
AND (@CampaignID < 0 OR EXISTS (SELECT 1 FROM Marketing_Campaigns WHERE ID = @CampaignID))
AND NOT EXISTS (SELECT 1 FROM [Campaign Results] WHERE CampaignID = @CampaignID AND RecordID > @NewestRow)
