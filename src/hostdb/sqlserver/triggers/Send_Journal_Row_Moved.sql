CREATE TRIGGER Send_Journal_Row_Moved ON [Campaign Results] AFTER UPDATE AS
BEGIN
  SET NOCOUNT ON;
  IF NOT UPDATE(CampaignID) RETURN;
  UPDATE j SET CampaignID = i.CampaignID
  FROM Send_Journal j JOIN inserted i ON i.RecordID = j.RecordID WHERE i.CampaignID <> j.CampaignID;
END;
