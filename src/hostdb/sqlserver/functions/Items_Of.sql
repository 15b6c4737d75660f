-- Splits a list at its commas. An item has at most 2000 characters. The function copies the list piece by piece,
-- because every look into a long list takes time in proportion to its length.
CREATE FUNCTION Items_Of (@List nvarchar(max))
RETURNS @Items TABLE (Value nvarchar(2000) NOT NULL)
AS
BEGIN
  DECLARE @From int = 1, @At int = 1, @End int;
  DECLARE @Piece nvarchar(4000) = SUBSTRING(@List + ',', 1, 4000);
  WHILE @Piece <> ''
  BEGIN
    SET @End = CHARINDEX(',', @Piece COLLATE Latin1_General_BIN2, @At);
    WHILE @End > 0
    BEGIN
      INSERT INTO @Items (Value) VALUES (SUBSTRING(@Piece, @At, @End - @At));
      SET @At = @End + 1;
      SET @End = CHARINDEX(',', @Piece COLLATE Latin1_General_BIN2, @At);
    END;
    IF @At = 1 BREAK;
    SET @From = @From + @At - 1;
    SET @At = 1;
    SET @Piece = SUBSTRING(@List + ',', @From, 4000);
  END;
  RETURN;
END;
