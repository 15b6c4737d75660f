-- Returns the number of a new, unsaved campaign in one row with one column. Numbers count down from -1. No number is
-- given twice, not even after a restart.
CREATE PROCEDURE proc_sel_NextTEMPID
AS
UPDATE _Keys SET Last_Value = Last_Value + Step WHERE Key_Name = 'TEMP' RETURNING Last_Value AS ID;
