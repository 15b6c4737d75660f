-- Returns some rows of a campaign before or after a change: where their messages would go, why a message must not go
-- (see the view Send_Refusals), and the state of the row (see the view Campaign_Results_States). The state shows
-- whether the row was changed. proc_updp_Results_Rows_Back restores it. @RecordIDs holds the keys of the rows,
-- separated by commas. A row that is gone is not returned.
CREATE PROCEDURE proc_selp_Results_Rows
  @CampaignID int,
  @RecordIDs nvarchar(max)
AS
SELECT r.RecordID, r.Send_SMS, r.Send_Email, r.Send_Letter, r.Mobile, r.Email, r.Address, f.SMS_Refusal, f.Email_Refusal, f.Letter_Refusal, s.State
FROM json_each('[' || @RecordIDs || ']') k
CROSS JOIN [Campaign Results] r ON r.RecordID = k.value
CROSS JOIN Campaign_Results_States s ON s.RecordID = r.RecordID
CROSS JOIN Send_Refusals f ON f.RecordID = r.RecordID
WHERE r.CampaignID = @CampaignID;
