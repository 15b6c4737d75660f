-- Adds an event to the general event log.
CREATE PROCEDURE proc_addp__Log
  @Username nvarchar(50),
  @EventType smallint,
  @TableID smallint = 0,
  @TableKey nvarchar(25) = NULL,
  @Details nvarchar(80) = NULL
AS
INSERT INTO _Log (Log_Date, Username, EventType, TableID, TableKey, Details)
VALUES (GetDate(), @Username, @EventType, @TableID, @TableKey, @Details);
