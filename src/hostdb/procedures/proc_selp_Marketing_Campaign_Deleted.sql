-- Returns who deleted a campaign and when, or no row when the history does not say.
CREATE PROCEDURE proc_selp_Marketing_Campaign_Deleted
  @CampaignID int
AS
SELECT UserID, Record_Date
FROM Marketing_Campaigns_History
WHERE ID = (SELECT max(ID) FROM Marketing_Campaigns_History WHERE CampaignID = @CampaignID AND Event = 'Campaign deleted');
