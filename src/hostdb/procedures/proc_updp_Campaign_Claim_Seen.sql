-- Says that the run holding the claim is alive.
CREATE PROCEDURE proc_updp_Campaign_Claim_Seen
  @CampaignID int
AS
UPDATE Campaign_Claims SET LastSeen = GetDate() WHERE CampaignID = @CampaignID;
