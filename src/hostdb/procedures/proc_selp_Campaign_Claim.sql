-- Returns who is sending a campaign: one row, or none. Silent is the number of seconds since LastSeen, by the clock of
-- the database. LastSeen is in UTC, because a local time would seem an hour older when summer time begins.
CREATE PROCEDURE proc_selp_Campaign_Claim
  @CampaignID int
AS
SELECT CampaignID, UserID, Computer, ProcessID, ProcessStart, Claimed, LastSeen,
  CAST(strftime('%s', GetUtcDate()) AS int) - CAST(strftime('%s', LastSeen) AS int) AS Silent
FROM Campaign_Claims WHERE CampaignID = @CampaignID;
