-- Every change of rows changes the counters, whatever its kind. The new rows are added, the old ones subtracted. A
-- campaign without a counted row has no counters.
CREATE TRIGGER Campaign_Results_Count ON [Campaign Results] AFTER INSERT, UPDATE, DELETE AS
BEGIN
  SET NOCOUNT ON;
  DECLARE @Changes TABLE (CampaignID int NOT NULL PRIMARY KEY, ByLetter int, BySMS int, BySMS_Processed int, ByEmail int, ByEmail_Processed int);
  INSERT INTO @Changes (CampaignID, ByLetter, BySMS, BySMS_Processed, ByEmail, ByEmail_Processed)
  SELECT CampaignID, sum(Letter), sum(SMS), sum(SMS_Done), sum(Email), sum(Email_Done)
  FROM (
    SELECT CampaignID, CASE WHEN Send_Letter = 1 THEN 1 ELSE 0 END AS Letter, CASE WHEN Send_SMS = 1 THEN 1 ELSE 0 END AS SMS,
      CASE WHEN Send_SMS = 1 AND Processed = 1 THEN 1 ELSE 0 END AS SMS_Done, CASE WHEN Send_Email = 1 THEN 1 ELSE 0 END AS Email,
      CASE WHEN Send_Email = 1 AND Processed = 1 THEN 1 ELSE 0 END AS Email_Done
    FROM inserted WHERE Send_SMS = 1 OR Send_Email = 1 OR Send_Letter = 1
    UNION ALL
    SELECT CampaignID, CASE WHEN Send_Letter = 1 THEN -1 ELSE 0 END, CASE WHEN Send_SMS = 1 THEN -1 ELSE 0 END,
      CASE WHEN Send_SMS = 1 AND Processed = 1 THEN -1 ELSE 0 END, CASE WHEN Send_Email = 1 THEN -1 ELSE 0 END,
      CASE WHEN Send_Email = 1 AND Processed = 1 THEN -1 ELSE 0 END
    FROM deleted WHERE Send_SMS = 1 OR Send_Email = 1 OR Send_Letter = 1
  ) changed
  GROUP BY CampaignID
  HAVING sum(Letter) <> 0 OR sum(SMS) <> 0 OR sum(SMS_Done) <> 0 OR sum(Email) <> 0 OR sum(Email_Done) <> 0;
  IF NOT EXISTS (SELECT 1 FROM @Changes) RETURN;
  INSERT INTO Campaign_Results_Counters (CampaignID)
  SELECT c.CampaignID FROM @Changes c
  WHERE NOT EXISTS (SELECT 1 FROM Campaign_Results_Counters k WITH (UPDLOCK, HOLDLOCK) WHERE k.CampaignID = c.CampaignID);
  UPDATE k SET ByLetter = k.ByLetter + c.ByLetter, BySMS = k.BySMS + c.BySMS, BySMS_Processed = k.BySMS_Processed + c.BySMS_Processed,
    ByEmail = k.ByEmail + c.ByEmail, ByEmail_Processed = k.ByEmail_Processed + c.ByEmail_Processed
  FROM Campaign_Results_Counters k JOIN @Changes c ON c.CampaignID = k.CampaignID;
  DELETE FROM Campaign_Results_Counters
  WHERE CampaignID IN (SELECT CampaignID FROM @Changes) AND ByLetter = 0 AND BySMS = 0 AND ByEmail = 0;
END;
