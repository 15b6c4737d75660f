-- Returns the makes of one kind, ordered by name: RecordID and Description. @Kind: 0 makes of vehicles, 5 makes of
-- engines.
CREATE PROCEDURE proc_sel_Makes_all
  @Kind smallint = 0
AS
SELECT RecordID, Description FROM Makes WHERE Kind = @Kind ORDER BY Description;
