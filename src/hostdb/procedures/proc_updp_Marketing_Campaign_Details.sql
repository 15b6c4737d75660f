-- Changes the name and description of a saved campaign. Adds a row with the new name to the history. A campaign that is
-- not stored is an error.
CREATE PROCEDURE proc_updp_Marketing_Campaign_Details
  @CampaignID int,
  @Campaign_Name nvarchar(255),
  @Campaign_Description nvarchar(max),
  @UserID nvarchar(50)
AS
SELECT RaiseError(50000, 'The campaign is no longer stored.')
WHERE NOT EXISTS (SELECT 1 FROM Marketing_Campaigns WHERE ID = @CampaignID);
UPDATE Marketing_Campaigns SET Campaign_Name = @Campaign_Name, Campaign_Description = @Campaign_Description WHERE ID = @CampaignID;
INSERT INTO Marketing_Campaigns_History (Record_Date, CampaignID, Campaign_Name, Event, UserID)
SELECT GetDate(), ID, Campaign_Name, 'Name or description changed', @UserID FROM Marketing_Campaigns WHERE ID = @CampaignID;
