-- Forgets which letters of a campaign went out, in the rows that are not processed, so that they are made again.
CREATE PROCEDURE proc_delp_Letter_Journal
  @CampaignID int
AS
DELETE FROM Send_Journal
WHERE CampaignID = @CampaignID AND Channel = 3
  AND RecordID IN (SELECT RecordID FROM [Campaign Results] WHERE CampaignID = @CampaignID AND Processed = 0);
