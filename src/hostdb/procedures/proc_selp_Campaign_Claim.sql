-- Returns who is sending a campaign: one row, or none. Silent is the number of seconds since LastSeen, by the clock of
-- the database.
CREATE PROCEDURE proc_selp_Campaign_Claim
  @CampaignID int
AS
SELECT CampaignID, UserID, Computer, ProcessID, ProcessStart, Claimed, LastSeen,
  CAST(strftime('%s', GetDate()) AS int) - CAST(strftime('%s', LastSeen) AS int) AS Silent
FROM Campaign_Claims WHERE CampaignID = @CampaignID;
