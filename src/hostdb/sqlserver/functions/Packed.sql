-- Makes a text a field of a record. The field contains none of the characters that end a field ("|") or a record ("}").
CREATE FUNCTION Packed (@Text nvarchar(max))
RETURNS nvarchar(max)
AS
BEGIN
  RETURN isnull(REPLACE(REPLACE(REPLACE(REPLACE(@Text COLLATE Latin1_General_BIN2, '~', '~t'), '|', '~p'), '{', '~o'), '}', '~c'), '~n') + '|';
END;
