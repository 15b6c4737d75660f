-- Deletes a saved campaign with its results, their entries in the send journal, its counters and its claim. Its history
-- stays and gets one more row.
CREATE PROCEDURE proc_delp_Marketing_Campaign
  @CampaignID int,
  @UserID nvarchar(50)
AS
INSERT INTO Marketing_Campaigns_History (Record_Date, CampaignID, Campaign_Name, Event, UserID)
SELECT GetDate(), ID, Campaign_Name, 'Campaign deleted', @UserID FROM Marketing_Campaigns WHERE ID = @CampaignID;
DELETE FROM [Campaign Results] WHERE CampaignID = @CampaignID;
DELETE FROM Send_Journal WHERE CampaignID = @CampaignID;
DELETE FROM Campaign_Results_Counters WHERE CampaignID = @CampaignID;
DELETE FROM Campaign_Claims WHERE CampaignID = @CampaignID;
DELETE FROM Marketing_Campaigns WHERE ID = @CampaignID;
