-- Locks the rows @RecordIDs of the campaign. Declares @Held with their keys.
DECLARE @Held TABLE (RecordID int NOT NULL PRIMARY KEY);
INSERT INTO @Held (RecordID)
SELECT r.RecordID
FROM json_each('[' || @RecordIDs || ']') k
JOIN [Campaign Results] r WITH (UPDLOCK) ON r.RecordID = k.value
WHERE r.CampaignID = @CampaignID;
