-- Claims a campaign for a run. An earlier claim is replaced, whoever held it. The caller checks first, in the same
-- transaction, whether the present claim is alive.
CREATE PROCEDURE proc_addp_Campaign_Claim
  @CampaignID int,
  @UserID nvarchar(50),
  @Computer nvarchar(255),
  @ProcessID int,
  @ProcessStart nvarchar(50)
AS
REPLACE INTO Campaign_Claims (CampaignID, UserID, Computer, ProcessID, ProcessStart, Claimed, LastSeen)
VALUES (@CampaignID, @UserID, @Computer, @ProcessID, @ProcessStart, GetDate(), GetUtcDate());
