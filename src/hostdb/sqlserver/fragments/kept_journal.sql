-- Restores the entries of the rows @Kept in the send journal.
INSERT INTO Send_Journal (RecordID, CampaignID, Channel, State, UserID, Changed, Reason)
SELECT k.RecordID, @CampaignID, (s.Field - 2) / 4, CAST(s.Value AS smallint), u.Value, CONVERT(datetime, c.Value, 121), n.Value
FROM @Kept k
JOIN @Fields s ON s.Record = k.Record AND s.Field IN (6, 10, 14) AND s.Value IS NOT NULL
JOIN @Fields u ON u.Record = k.Record AND u.Field = s.Field + 1
JOIN @Fields c ON c.Record = k.Record AND c.Field = s.Field + 2
JOIN @Fields n ON n.Record = k.Record AND n.Field = s.Field + 3
WHERE NOT EXISTS (SELECT 1 FROM Send_Journal j WHERE j.RecordID = k.RecordID AND j.Channel = (s.Field - 2) / 4);
