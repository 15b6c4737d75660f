-- @include kept_fields
INSERT INTO @Kept (RecordID, Record)
SELECT r.RecordID, f.Record
FROM @Fields f
JOIN [Campaign Results] r WITH (UPDLOCK) ON r.RecordID = CASE f.Field WHEN 0 THEN CAST(f.Value AS int) END
WHERE f.Field = 0 AND r.CampaignID = @CampaignID;
DECLARE @States TABLE (RecordID int NOT NULL PRIMARY KEY, Send_SMS int, Send_Email int, Send_Letter int, Processed int, Processed_Date datetime);
INSERT INTO @States (RecordID, Send_SMS, Send_Email, Send_Letter, Processed, Processed_Date)
SELECT k.RecordID, CAST(max(CASE Field WHEN 1 THEN Value END) AS int), CAST(max(CASE Field WHEN 2 THEN Value END) AS int),
  CAST(max(CASE Field WHEN 3 THEN Value END) AS int), CAST(max(CASE Field WHEN 4 THEN Value END) AS int),
  CONVERT(datetime, max(CASE Field WHEN 5 THEN Value END), 121)
FROM @Kept k JOIN @Fields f ON f.Record = k.Record WHERE f.Field BETWEEN 1 AND 5 GROUP BY k.RecordID;
UPDATE r SET Send_SMS = s.Send_SMS, Send_Email = s.Send_Email, Send_Letter = s.Send_Letter, Processed = s.Processed
FROM [Campaign Results] r JOIN @States s ON s.RecordID = r.RecordID;
-- This comes after the trigger, which sets the date.
UPDATE r SET Processed_Date = s.Processed_Date
FROM [Campaign Results] r JOIN @States s ON s.RecordID = r.RecordID
WHERE isnull(r.Processed_Date, 0) <> isnull(s.Processed_Date, 0);
DELETE FROM Send_Journal WHERE RecordID IN (SELECT RecordID FROM @Kept);
-- @include kept_journal
