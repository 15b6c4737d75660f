-- Says that the run holding the claim is alive. Returns the campaign; no row comes back when the claim is another one's (any more), and then
-- that run must end.
CREATE PROCEDURE proc_updp_Campaign_Claim_Seen
  @CampaignID int,
  @Computer nvarchar(255),
  @ProcessID int,
  @ProcessStart nvarchar(50)
AS
UPDATE Campaign_Claims SET LastSeen = GetDate()
WHERE CampaignID = @CampaignID AND Computer = @Computer AND ProcessID = @ProcessID AND ProcessStart = @ProcessStart
RETURNING CampaignID;
