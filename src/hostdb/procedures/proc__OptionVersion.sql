-- Returns the versions of the database in one row. Version is that of the host schema, Marketing_Version is the level
-- of the marketing module.
CREATE PROCEDURE proc__OptionVersion
AS
SELECT Version, Marketing_Version FROM _Version;
