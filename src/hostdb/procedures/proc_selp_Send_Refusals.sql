-- The rows of a campaign whose text, e-mail or letter must not go any more, with the reasons (see the view Send_Refusals); 0 where nothing is against it.
CREATE PROCEDURE proc_selp_Send_Refusals
  @CampaignID int
AS
SELECT RecordID, SMS_Refusal, Email_Refusal, Letter_Refusal FROM Send_Refusals
WHERE CampaignID = @CampaignID AND (SMS_Refusal <> 0 OR Email_Refusal <> 0 OR Letter_Refusal <> 0);
