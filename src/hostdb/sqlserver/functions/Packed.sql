-- A text as a field of a record: it holds none of the characters that end one ("|") or a record ("}").
CREATE FUNCTION Packed (@Text nvarchar(max))
RETURNS nvarchar(max)
AS
BEGIN
  RETURN isnull(REPLACE(REPLACE(REPLACE(REPLACE(@Text COLLATE Latin1_General_BIN2, '~', '~t'), '|', '~p'), '{', '~o'), '}', '~c'), '~n') + '|';
END;
