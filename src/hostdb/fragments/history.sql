-- Adds the run of a saved campaign to its history.
INSERT INTO Marketing_Campaigns_History (Record_Date, CampaignID, Campaign_Name, Event, UserID)
SELECT GetDate(), ID, Campaign_Name, 'Query run' || CASE WHEN ltrim(rtrim(@CampaignType)) <> '' THEN ': ' || @CampaignType ELSE '' END, @UserID
FROM Marketing_Campaigns WHERE ID = @CampaignID;
UPDATE Marketing_Campaigns SET Last_Run = GetDate() WHERE ID = @CampaignID;
