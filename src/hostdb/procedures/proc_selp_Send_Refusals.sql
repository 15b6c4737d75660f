-- Returns the rows of a campaign whose text message, e-mail or letter must no longer go, with the reasons (see the view
-- Send_Refusals). 0 means that the message may go.
CREATE PROCEDURE proc_selp_Send_Refusals
  @CampaignID int
AS
SELECT RecordID, SMS_Refusal, Email_Refusal, Letter_Refusal FROM Send_Refusals
WHERE CampaignID = @CampaignID AND (SMS_Refusal <> 0 OR Email_Refusal <> 0 OR Letter_Refusal <> 0);
