-- What keeps a run from contacting anybody twice: the journal of messages and the claim on a campaign.

-- One row for each message of a campaign row. Channel 1 text, 2 e-mail. State 0 sending, 1 sent, 2 failed. A message that is found at
-- "sending" while nobody sends is in doubt: it may have gone out.
CREATE TABLE Send_Journal (
  RecordID int NOT NULL,
  Channel smallint NOT NULL CHECK (Channel IN (1, 2)),
  State smallint NOT NULL CHECK (State IN (0, 1, 2)),
  CampaignID int NOT NULL,
  UserID nvarchar(50) COLLATE NOCASE,
  Changed datetime NOT NULL,
  PRIMARY KEY (RecordID, Channel)
) WITHOUT ROWID;
CREATE INDEX Send_Journal_Campaign ON Send_Journal (CampaignID, RecordID, Channel, State);

CREATE TRIGGER Send_Journal_Row_Deleted AFTER DELETE ON [Campaign Results]
BEGIN
  DELETE FROM Send_Journal WHERE RecordID = old.RecordID;
END;

CREATE TRIGGER Send_Journal_Row_Moved AFTER UPDATE OF CampaignID ON [Campaign Results]
WHEN new.CampaignID <> old.CampaignID
BEGIN
  UPDATE Send_Journal SET CampaignID = new.CampaignID WHERE RecordID = new.RecordID;
END;

-- Who is sending a campaign now. The process is named by its number and its start on its computer, so that a number that was given out
-- again is not taken for the run that claimed.
CREATE TABLE Campaign_Claims (
  CampaignID integer PRIMARY KEY,
  UserID nvarchar(50) COLLATE NOCASE,
  Computer nvarchar(255) COLLATE NOCASE,
  ProcessID int NOT NULL,
  ProcessStart nvarchar(50) NOT NULL,
  Claimed datetime NOT NULL,
  LastSeen datetime NOT NULL
);
