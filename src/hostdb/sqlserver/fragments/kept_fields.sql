-- Declares @Fields with the fields of @Rows, and @Kept for the keys of the records.
DECLARE @Fields TABLE (Record int NOT NULL, Field int NOT NULL, Value nvarchar(2000) NULL, PRIMARY KEY (Record, Field));
INSERT INTO @Fields (Record, Field, Value) SELECT Record, Field, Value FROM dbo.Fields_Of(@Rows);
DECLARE @Kept TABLE (RecordID int NOT NULL PRIMARY KEY, Record int NOT NULL);
