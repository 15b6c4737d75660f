-- The send journal holds letters, too. The triggers that look after it stand at another table and stay.
CREATE TABLE Kept_Rows AS SELECT * FROM Send_Journal NOT INDEXED;
DROP TABLE Send_Journal;
CREATE TABLE Send_Journal (
  RecordID int NOT NULL,
  Channel smallint NOT NULL CHECK (Channel IN (1, 2, 3)),
  State smallint NOT NULL CHECK (State IN (0, 1, 2)),
  CampaignID int NOT NULL,
  UserID nvarchar(50) COLLATE NOCASE,
  Changed datetime NOT NULL,
  Reason nvarchar(255) COLLATE NOCASE,
  PRIMARY KEY (RecordID, Channel)
) WITHOUT ROWID;
INSERT INTO Send_Journal (RecordID, Channel, State, CampaignID, UserID, Changed, Reason)
SELECT RecordID, Channel, State, CampaignID, UserID, Changed, Reason FROM Kept_Rows;
DROP TABLE Kept_Rows;
CREATE INDEX Send_Journal_Campaign ON Send_Journal (CampaignID, RecordID, Channel, State);
