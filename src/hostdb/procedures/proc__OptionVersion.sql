-- The versions of the database: one row with Version (the host schema) and Marketing_Version (the level of the marketing module).
CREATE PROCEDURE proc__OptionVersion
AS
SELECT Version, Marketing_Version FROM _Version;
