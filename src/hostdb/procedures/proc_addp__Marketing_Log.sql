-- Writes one marketing event of a campaign. A trigger repeats it in the campaign history and, unless it says that a user was turned away,
-- notes it as the last run of the campaign.
CREATE PROCEDURE proc_addp__Marketing_Log
  @UserID nvarchar(50),
  @Event nvarchar(max),
  @CampaignID int
AS
INSERT INTO _Marketing_Log (Log_Date, UserID, Event, CampaignID)
VALUES (GetDate(), @UserID, @Event, @CampaignID);
