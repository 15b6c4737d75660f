-- Splits records, as in "{4711|1|~n|}", into fields. Record counts from 1, Field from 0. A field "~n" gives a Value of
-- NULL. Text between two records is ignored. The function copies the text piece by piece, because every look into a
-- long text takes time in proportion to its length. Every field has fewer than 2000 characters.
CREATE FUNCTION Fields_Of (@Rows nvarchar(max))
RETURNS @Fields TABLE (Record int NOT NULL, Field int NOT NULL, Value nvarchar(2000) NULL)
AS
BEGIN
  DECLARE @From int = 1, @At int = 1, @End int, @Inside int = 0, @Record int = 0, @Field int = 0, @Value nvarchar(2000);
  DECLARE @Piece nvarchar(4000) = isnull(SUBSTRING(@Rows, 1, 4000), '');
  WHILE 1 = 1
  BEGIN
    IF @At > 2000
    BEGIN
      SET @From = @From + @At - 1;
      SET @Piece = SUBSTRING(@Rows, @From, 4000);
      SET @At = 1;
    END;
    IF @Inside = 0
    BEGIN
      SET @At = CHARINDEX('{', @Piece COLLATE Latin1_General_BIN2, @At) + 1;
      IF @At = 1 BREAK;
      SET @Inside = 1;
      SET @Record = @Record + 1;
      SET @Field = 0;
    END
    ELSE IF SUBSTRING(@Piece, @At, 1) = '}'
    BEGIN
      SET @Inside = 0;
      SET @At = @At + 1;
    END
    ELSE
    BEGIN
      SET @End = CHARINDEX('|', @Piece COLLATE Latin1_General_BIN2, @At);
      IF @End = 0 BREAK;
      SET @Value = SUBSTRING(@Piece, @At, @End - @At);
      INSERT INTO @Fields (Record, Field, Value)
      VALUES (@Record, @Field, CASE WHEN @Value <> '~n' THEN
        REPLACE(REPLACE(REPLACE(REPLACE(@Value COLLATE Latin1_General_BIN2, '~c', '}'), '~o', '{'), '~p', '|'), '~t', '~') END);
      SET @Field = @Field + 1;
      SET @At = @End + 1;
    END;
  END;
  RETURN;
END;
