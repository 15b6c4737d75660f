-- Gives a claim back. Only the process that holds the claim can do so. A claim that another run took over stays.
CREATE PROCEDURE proc_delp_Campaign_Claim
  @CampaignID int,
  @ProcessID int,
  @Computer nvarchar(255)
AS
DELETE FROM Campaign_Claims WHERE CampaignID = @CampaignID AND ProcessID = @ProcessID AND Computer = @Computer;
