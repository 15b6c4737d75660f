CREATE TRIGGER Send_Journal_Row_Deleted ON [Campaign Results] AFTER DELETE AS
BEGIN
  SET NOCOUNT ON;
  DELETE FROM Send_Journal WHERE RecordID IN (SELECT RecordID FROM deleted);
END;
