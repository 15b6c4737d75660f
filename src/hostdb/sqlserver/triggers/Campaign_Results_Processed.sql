CREATE TRIGGER Campaign_Results_Processed ON [Campaign Results] AFTER UPDATE AS
BEGIN
  SET NOCOUNT ON;
  IF NOT UPDATE(Processed) RETURN;
  UPDATE r SET Processed_Date = CASE WHEN i.Processed = 1 THEN GetDate() END
  FROM [Campaign Results] r JOIN inserted i ON i.RecordID = r.RecordID JOIN deleted d ON d.RecordID = i.RecordID
  WHERE i.Processed <> d.Processed;
END;
