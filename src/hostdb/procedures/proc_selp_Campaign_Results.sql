-- Returns the rows of a campaign as the results grid shows them, in the order of their selection. RecordID is the first
-- column.
CREATE PROCEDURE proc_selp_Campaign_Results
  @CampaignID int
AS
SELECT * FROM Campaign_Results_Grid WHERE CampaignID = @CampaignID ORDER BY RecordID;
