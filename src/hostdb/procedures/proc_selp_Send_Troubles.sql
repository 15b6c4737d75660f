-- The texts and e-mails of a campaign that need a person, with whom they were for: those that were begun and have no outcome (State 0), so that it is not
-- known whether they went out, and those that failed (State 2) in rows that are not processed, with the reason.
CREATE PROCEDURE proc_selp_Send_Troubles
  @CampaignID int
AS
SELECT j.RecordID, r.Customer, r.Contact, r.Mobile, r.Email, j.Channel, j.State, j.Reason, j.Changed, j.UserID
FROM Send_Journal j
JOIN [Campaign Results] r ON r.RecordID = j.RecordID
WHERE j.CampaignID = @CampaignID AND j.Channel IN (1, 2) AND (j.State = 0 OR (j.State = 2 AND r.Processed = 0))
ORDER BY j.RecordID, j.Channel;
