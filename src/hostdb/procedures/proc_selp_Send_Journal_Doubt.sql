-- The messages of a campaign that were begun and have no outcome, with whom they were for: it is not known whether they went out.
CREATE PROCEDURE proc_selp_Send_Journal_Doubt
  @CampaignID int
AS
SELECT j.RecordID, r.Customer, r.Contact, r.Mobile, r.Email, j.Channel, j.Changed, j.UserID
FROM Send_Journal j
JOIN [Campaign Results] r ON r.RecordID = j.RecordID
WHERE j.CampaignID = @CampaignID AND j.State = 0
ORDER BY j.RecordID, j.Channel;
