-- A tool that goes on after an error, on a server that does not know NOEXEC, must not say here that all went well.
IF @@TRANCOUNT > 0
BEGIN
  IF NOT EXISTS (SELECT 1 FROM _Options WHERE Options_Company = N'A') INSERT INTO _Options (Options_Company) VALUES (N'A');
  -- A desk that changes thousands of rows must not hold the rows of all campaigns.
  ALTER TABLE [Campaign Results] SET (LOCK_ESCALATION = DISABLE);
  ALTER TABLE Send_Journal SET (LOCK_ESCALATION = DISABLE);
  UPDATE _Version SET Objects_Set = @OBJECTS_SET@, Objects_Fingerprint = N'@OBJECTS_FINGERPRINT@';
  COMMIT TRANSACTION;
END;
GO
SET NOEXEC OFF
GO
