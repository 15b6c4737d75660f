-- Who is sending a campaign: one row, or none.
CREATE PROCEDURE proc_selp_Campaign_Claim
  @CampaignID int
AS
SELECT CampaignID, UserID, Computer, ProcessID, ProcessStart, Claimed, LastSeen
FROM Campaign_Claims WHERE CampaignID = @CampaignID;
