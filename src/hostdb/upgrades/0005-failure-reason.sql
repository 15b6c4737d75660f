-- The send journal tells why a message failed.
ALTER TABLE Send_Journal ADD COLUMN Reason nvarchar(255) COLLATE NOCASE;
