-- Returns the entries of a campaign in the send journal, ordered by row: RecordID, Channel (1 text message, 2 e-mail,
-- 3 letter) and State (0 sending, 1 sent, 2 failed).
CREATE PROCEDURE proc_selp_Send_Journal
  @CampaignID int
AS
SELECT RecordID, Channel, State FROM Send_Journal WHERE CampaignID = @CampaignID ORDER BY RecordID, Channel;
