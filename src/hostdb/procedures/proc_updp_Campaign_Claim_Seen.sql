-- Notes that the run which holds the claim is alive. Returns the campaign. Returns no row when the run does not hold
-- the claim any more. That run must then end.
CREATE PROCEDURE proc_updp_Campaign_Claim_Seen
  @CampaignID int,
  @Computer nvarchar(255),
  @ProcessID int,
  @ProcessStart nvarchar(50)
AS
UPDATE Campaign_Claims SET LastSeen = GetUtcDate()
WHERE CampaignID = @CampaignID AND Computer = @Computer AND ProcessID = @ProcessID AND ProcessStart = @ProcessStart
RETURNING CampaignID;
