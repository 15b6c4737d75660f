-- Returns, in one row with one column, how many customers of a campaign got one of their two messages from an earlier
-- run while the other one failed. The two messages are the text message and the e-mail. It counts only rows that still
-- ask for both, are not processed and may still be sent.
CREATE PROCEDURE proc_selp_Delivered_Before
  @CampaignID int
AS
SELECT Count(DISTINCT r.Customer) AS Customers
FROM Send_Journal sent
JOIN Send_Journal failed ON failed.RecordID = sent.RecordID AND failed.State = 2
JOIN [Campaign Results] r ON r.RecordID = sent.RecordID
WHERE sent.CampaignID = @CampaignID AND sent.Channel IN (1, 2) AND failed.Channel IN (1, 2) AND sent.State = 1 AND r.Processed = 0 AND r.Send_SMS = 1 AND r.Send_Email = 1
  AND NOT EXISTS (SELECT 1 FROM Send_Refusals f WHERE f.RecordID = r.RecordID AND (f.SMS_Refusal <> 0 OR f.Email_Refusal <> 0));
