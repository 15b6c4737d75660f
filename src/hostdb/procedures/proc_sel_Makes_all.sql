-- The makes of one kind by name: 0 makes of vehicles, 5 makes of engines. Columns RecordID and Description.
CREATE PROCEDURE proc_sel_Makes_all
  @Kind smallint = 0
AS
SELECT RecordID, Description FROM Makes WHERE Kind = @Kind ORDER BY Description;
