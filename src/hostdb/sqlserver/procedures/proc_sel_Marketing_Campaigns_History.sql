SELECT ID, Record_Date, Campaign_Name, Event, UserID, CampaignID
FROM Marketing_Campaigns_History
WHERE @Count <= 0 OR ID IN (SELECT TOP (CASE WHEN @Count > 0 THEN @Count ELSE 0 END) ID FROM Marketing_Campaigns_History ORDER BY ID DESC)
ORDER BY ID;
