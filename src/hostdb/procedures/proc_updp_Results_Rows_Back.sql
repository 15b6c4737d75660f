-- Restores an earlier state of some rows of a campaign: their flags, when they were processed, and their entries in the
-- send journal. @Rows is [[key, state], ...] with states as proc_selp_Results_Rows returned them. The caller has
-- checked, in the same transaction, that nothing else changed these rows.
CREATE PROCEDURE proc_updp_Results_Rows_Back
  @CampaignID int,
  @Rows nvarchar(max)
AS
-- NOT INDEXED makes the database look up each row by its key. It does not go through the campaign for each row.
UPDATE [Campaign Results] NOT INDEXED SET
  Send_SMS = k.value ->> '$[1][0]', Send_Email = k.value ->> '$[1][1]', Send_Letter = k.value ->> '$[1][2]', Processed = k.value ->> '$[1][3]'
FROM json_each(@Rows) k
WHERE RecordID = k.value ->> '$[0]' AND CampaignID = @CampaignID;
UPDATE [Campaign Results] NOT INDEXED SET Processed_Date = k.value ->> '$[1][4]'
FROM json_each(@Rows) k
WHERE RecordID = k.value ->> '$[0]' AND CampaignID = @CampaignID AND Processed_Date IS NOT k.value ->> '$[1][4]';
DELETE FROM Send_Journal WHERE CampaignID = @CampaignID AND RecordID IN (SELECT value ->> '$[0]' FROM json_each(@Rows));
INSERT INTO Send_Journal (RecordID, CampaignID, Channel, State, UserID, Changed, Reason)
SELECT k.value ->> '$[0]', @CampaignID,
  -- @include journal_of_state
FROM json_each(@Rows) k
CROSS JOIN json_each(k.value, '$[1][5]') j
WHERE EXISTS (SELECT 1 FROM [Campaign Results] r WHERE r.RecordID = k.value ->> '$[0]' AND r.CampaignID = @CampaignID);
