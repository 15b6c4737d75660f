-- Installs the tables, views, triggers and procedures of the marketing program in the database of the connection, or
-- upgrades those of an older program. The tables that the host has already stay, with their rows. First close the
-- program on every desk and make a backup.
--
-- Run the script with any tool that takes lines GO as the ends of batches. The whole script is one transaction. An
-- error anywhere leaves the database as it was.
SET ANSI_NULLS ON
SET QUOTED_IDENTIFIER ON
SET ANSI_PADDING ON
SET ANSI_WARNINGS ON
SET ANSI_NULL_DFLT_ON ON
SET ARITHABORT ON
SET CONCAT_NULL_YIELDS_NULL ON
SET NOCOUNT ON
SET XACT_ABORT ON
GO
BEGIN TRANSACTION
GO
IF N'a' <> N'A'
BEGIN
  ;THROW 50000, 'The database tells capital letters from small ones. Make it with a collation that does not (..._CI_...).', 1;
END;
IF SCHEMA_NAME() <> N'dbo'
BEGIN
  ;THROW 50000, 'The login does not work in the schema dbo. Use one that owns the database.', 1;
END;
IF OBJECT_ID(N'dbo._Version', N'U') IS NULL
BEGIN
  CREATE TABLE _Version (
    [Version] int NOT NULL,
    Marketing_Version int NOT NULL,
    File_Number int NOT NULL,
    Objects_Fingerprint nvarchar(40) NULL,
    Objects_Set int NOT NULL DEFAULT 0
  );
  EXEC (N'INSERT INTO _Version (Version, Marketing_Version, File_Number) VALUES (999, 6, @NEWEST@)');
END;
GO
IF @@TRANCOUNT = 0 SET NOEXEC ON
GO
IF COL_LENGTH(N'dbo._Version', N'File_Number') IS NULL
BEGIN
  ;THROW 50000, 'The database has a table _Version that is not of this program.', 1;
END;
GO
IF @@TRANCOUNT = 0 SET NOEXEC ON
GO
IF EXISTS (SELECT 1 FROM _Version WHERE File_Number > @NEWEST@ OR Objects_Set > @OBJECTS_SET@)
BEGIN
  ;THROW 50000, 'The database is of a newer program than this script.', 1;
END;
GO
IF @@TRANCOUNT = 0 SET NOEXEC ON
GO
