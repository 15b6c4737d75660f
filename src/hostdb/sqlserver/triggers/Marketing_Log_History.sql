-- Every marketing event appears in the history, too. An event that says that a run began sets the last run of the
-- campaign.
CREATE TRIGGER Marketing_Log_History ON _Marketing_Log AFTER INSERT AS
BEGIN
  SET NOCOUNT ON;
  INSERT INTO Marketing_Campaigns_History (Record_Date, CampaignID, Campaign_Name, Event, UserID)
  SELECT i.Log_Date, i.CampaignID, c.Campaign_Name, i.Event, i.UserID
  FROM inserted i LEFT JOIN Marketing_Campaigns c ON c.ID = i.CampaignID;
  UPDATE c SET Last_Run = i.Log_Date
  FROM Marketing_Campaigns c JOIN inserted i ON i.CampaignID = c.ID WHERE i.Event <> 'Not a Manager User';
END;
