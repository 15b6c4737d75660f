-- Returns the events of campaigns, the latest last: saves, copies, deletions, query runs and marketing events. @Count
-- is the number of latest events to return. 0 returns all of them.
CREATE PROCEDURE proc_sel_Marketing_Campaigns_History
  @Count int = 50
AS
SELECT ID, Record_Date, Campaign_Name, Event, UserID, CampaignID
FROM Marketing_Campaigns_History
WHERE ID > CASE WHEN @Count <= 0 THEN 0
  ELSE ifnull((SELECT ID FROM Marketing_Campaigns_History ORDER BY ID DESC LIMIT 1 OFFSET @Count), 0) END
ORDER BY ID;
