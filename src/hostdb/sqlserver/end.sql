-- After an error some tools go on, and some servers do not know NOEXEC. The transaction has ended by then, and the
-- script must not record a success.
IF @@TRANCOUNT > 0
BEGIN
  IF NOT EXISTS (SELECT 1 FROM _Options WHERE Options_Company = N'A') INSERT INTO _Options (Options_Company) VALUES (N'A');
  -- Without lock escalation a desk that changes thousands of rows does not lock the rows of all campaigns.
  ALTER TABLE [Campaign Results] SET (LOCK_ESCALATION = DISABLE);
  ALTER TABLE Send_Journal SET (LOCK_ESCALATION = DISABLE);
  UPDATE _Version SET Objects_Set = @OBJECTS_SET@, Objects_Fingerprint = N'@OBJECTS_FINGERPRINT@';
  COMMIT TRANSACTION;
END;
GO
SET NOEXEC OFF
GO
