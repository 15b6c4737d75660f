-- The keys of a list, as in "4711,4712", each once.
CREATE FUNCTION Keys_Of (@Keys nvarchar(max))
RETURNS @List TABLE (value int NOT NULL PRIMARY KEY)
AS
BEGIN
  INSERT INTO @List (value) SELECT DISTINCT CAST(Value AS int) FROM dbo.Items_Of(@Keys) WHERE Value <> '';
  RETURN;
END;
