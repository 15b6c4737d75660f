-- The fields of @Rows, and the key of each record in it.
DECLARE @Fields TABLE (Record int NOT NULL, Field int NOT NULL, Value nvarchar(2000) NULL, PRIMARY KEY (Record, Field));
INSERT INTO @Fields (Record, Field, Value) SELECT Record, Field, Value FROM dbo.Fields_Of(@Rows);
DECLARE @Kept TABLE (RecordID int NOT NULL PRIMARY KEY, Record int NOT NULL);
