-- In a trigger of [Campaign Results]: a campaign that lost its last counted row has no counters.
DELETE FROM Campaign_Results_Counters WHERE CampaignID = old.CampaignID AND ByLetter = 0 AND BySMS = 0 AND ByEmail = 0;
