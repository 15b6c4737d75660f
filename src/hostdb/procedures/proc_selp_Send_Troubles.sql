-- Returns the text messages and e-mails of a campaign that somebody must look at, with their customers. State 0 is a
-- message that was begun and has no outcome, so that it is not known whether it went out. State 2 is a message that
-- failed, with the reason. Its row is returned only while it is not processed.
CREATE PROCEDURE proc_selp_Send_Troubles
  @CampaignID int
AS
SELECT j.RecordID, r.Customer, r.Contact, r.Mobile, r.Email, j.Channel, j.State, j.Reason, j.Changed, j.UserID
FROM Send_Journal j
JOIN [Campaign Results] r ON r.RecordID = j.RecordID
WHERE j.CampaignID = @CampaignID AND j.Channel IN (1, 2) AND (j.State = 0 OR (j.State = 2 AND r.Processed = 0))
ORDER BY j.RecordID, j.Channel;
