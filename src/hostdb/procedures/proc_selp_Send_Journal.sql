-- What the send journal holds of a campaign, by row: RecordID, Channel (1 text, 2 e-mail, 3 letter), State (0 sending, 1 sent, 2 failed).
CREATE PROCEDURE proc_selp_Send_Journal
  @CampaignID int
AS
SELECT RecordID, Channel, State FROM Send_Journal WHERE CampaignID = @CampaignID ORDER BY RecordID, Channel;
