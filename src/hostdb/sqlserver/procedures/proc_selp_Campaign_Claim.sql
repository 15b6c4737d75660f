-- In a transaction nobody else can look until the transaction ends, so that of two desks only one finds the campaign
-- free.
SELECT CampaignID, UserID, Computer, ProcessID, ProcessStart, Claimed, LastSeen, DATEDIFF(second, LastSeen, GetUtcDate()) AS Silent
FROM Campaign_Claims WITH (UPDLOCK, HOLDLOCK) WHERE CampaignID = @CampaignID;
