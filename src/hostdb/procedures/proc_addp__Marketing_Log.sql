-- Adds a marketing event of a campaign. A trigger copies the event to the campaign history. Unless the event says that
-- a user was turned away, the trigger also sets the last run of the campaign.
CREATE PROCEDURE proc_addp__Marketing_Log
  @UserID nvarchar(50),
  @Event nvarchar(max),
  @CampaignID int
AS
INSERT INTO _Marketing_Log (Log_Date, UserID, Event, CampaignID)
VALUES (GetDate(), @UserID, @Event, @CampaignID);
