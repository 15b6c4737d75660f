-- The journal of messages and the claim on a campaign. They keep a run from contacting anybody twice.

-- One row for each message of a campaign row. Channel: 1 text message, 2 e-mail, 3 letter. State: 0 sending, 1 sent,
-- 2 failed.
-- A text message or an e-mail at "sending" is in doubt while nobody sends: it may have gone out. A letter at "sending"
-- was made, but neither printed nor saved. Reason says why a message failed. In the entry of a letter at "sending" it
-- names the file or the printer ("printer:Office") that the letter was about to go to. Such a letter is in doubt, too.
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

-- What a change of a results row can alter and what taking it back restores, in one text: its flags, when it was
-- processed, and its entries in the send journal. Two states of a row are the same when their texts are the same.
CREATE VIEW Campaign_Results_States AS
SELECT r.RecordID, r.CampaignID,
  json_array(r.Send_SMS, r.Send_Email, r.Send_Letter, r.Processed, r.Processed_Date,
    json((SELECT json_group_array(json_array(j.Channel, j.State, j.UserID, j.Changed, j.Reason)) FROM Send_Journal j WHERE j.RecordID = r.RecordID))) AS State
FROM [Campaign Results] r;

-- Why a message of a results row must no longer go. Either the customer's answer is stricter now than when the row was
-- selected, or only customers who opted in may be contacted now. What the user chose on purpose stays allowed:
-- customers who opted out, "No Marketing", flags set by hand.
-- A refusal is 0 when nothing is against the message. 1: the customer was deleted, which counts as a refusal of every
-- message. 2: the customer opted out. 3: the customer has not opted in. 4: "No Marketing". 5: the customer no longer
-- agrees to this channel.
-- The numbers of the answers grow with their strictness. Consent: 0 consented, 1 not asked, 2 opted out. Channel:
-- 0 agreed, 1 never asked, 2 refused.
CREATE VIEW Send_Refusals AS
SELECT RecordID, CampaignID,
  CASE WHEN Refusal <> 0 THEN Refusal WHEN SMS_Now > SMS_Then AND (AskChannels = 1 OR SMS_Now = 2) THEN 5 ELSE 0 END AS SMS_Refusal,
  CASE WHEN Refusal <> 0 THEN Refusal WHEN Email_Now > Email_Then AND (AskChannels = 1 OR Email_Now = 2) THEN 5 ELSE 0 END AS Email_Refusal,
  CASE WHEN Refusal <> 0 THEN Refusal WHEN Letter_Now > Letter_Then AND (AskChannels = 1 OR Letter_Now = 2) THEN 5 ELSE 0 END AS Letter_Refusal
FROM (
  SELECT RecordID, CampaignID, SMS_Then, SMS_Now, Email_Then, Email_Now, Letter_Then, Letter_Now, AskChannels,
    CASE
      WHEN IsGone = 1 THEN 1
      WHEN Consent_Now > Consent_Then THEN CASE Consent_Now WHEN 2 THEN 2 ELSE 3 END
      WHEN OptedInOnly = 1 AND (Consent_Now > 0 OR (AskChannels = 1 AND AgreesToNone = 1)) THEN 3
      WHEN Marketing_Now < Marketing_Then THEN 4
      ELSE 0
    END AS Refusal
  FROM (
    SELECT r.RecordID, r.CampaignID,
      CASE WHEN c.Customer IS NULL THEN 1 ELSE 0 END AS IsGone,
      CASE r.Consent_Response WHEN 1 THEN 0 WHEN 2 THEN 2 ELSE 1 END AS Consent_Then,
      CASE c.Consent_Response WHEN 1 THEN 0 WHEN 2 THEN 2 ELSE 1 END AS Consent_Now,
      CASE r.Marketing WHEN 0 THEN 0 ELSE 1 END AS Marketing_Then,
      CASE c.No_Marketing WHEN 0 THEN 1 ELSE 0 END AS Marketing_Now,
      CASE r.Can_Send_SMS WHEN 1 THEN 0 WHEN 0 THEN 2 ELSE 1 END AS SMS_Then,
      CASE c.Can_Send_SMS WHEN 1 THEN 0 WHEN 0 THEN 2 ELSE 1 END AS SMS_Now,
      CASE r.Can_Send_Email WHEN 1 THEN 0 WHEN 0 THEN 2 ELSE 1 END AS Email_Then,
      CASE c.Can_Send_Email WHEN 1 THEN 0 WHEN 0 THEN 2 ELSE 1 END AS Email_Now,
      CASE r.Can_Send_Letter WHEN 1 THEN 0 WHEN 0 THEN 2 ELSE 1 END AS Letter_Then,
      CASE c.Can_Send_Letter WHEN 1 THEN 0 WHEN 0 THEN 2 ELSE 1 END AS Letter_Now,
      CASE WHEN c.Can_Send_SMS = 1 OR c.Can_Send_Email = 1 OR c.Can_Send_Letter = 1 THEN 0 ELSE 1 END AS AgreesToNone,
      CASE WHEN o.Only_Send_Comms_When_Opted_In = 1 THEN 1 ELSE 0 END AS OptedInOnly,
      CASE WHEN o.Using_Vrelo = 1 THEN 1 ELSE 0 END AS AskChannels
    FROM [Campaign Results] r
    LEFT JOIN Customers c ON c.Customer = r.Customer
    LEFT JOIN _Options o ON o.Options_Company = 'A'
  ) answers
) judged;

-- Who is sending a campaign now. A process is identified by its computer, its number and its start. The computer may
-- give the number to another process later. That process is then not mistaken for the run that claimed the campaign.
CREATE TABLE Campaign_Claims (
  CampaignID integer PRIMARY KEY,
  UserID nvarchar(50) COLLATE NOCASE,
  Computer nvarchar(255) COLLATE NOCASE,
  ProcessID int NOT NULL,
  ProcessStart nvarchar(50) NOT NULL,
  Claimed datetime NOT NULL,
  LastSeen datetime NOT NULL
);
