-- The number of a new, unsaved campaign: one row, one column. Counts down from -1; no number comes twice, also after a restart.
CREATE PROCEDURE proc_sel_NextTEMPID
AS
UPDATE _Keys SET Last_Value = Last_Value + Step WHERE Key_Name = 'TEMP' RETURNING Last_Value AS ID;
