-- In a trigger of [Campaign Results]: deletes the counters of a campaign that lost its last counted row.
DELETE FROM Campaign_Results_Counters WHERE CampaignID = old.CampaignID AND ByLetter = 0 AND BySMS = 0 AND ByEmail = 0;
