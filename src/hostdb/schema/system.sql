-- What the database knows about itself: versions, whether it is online, the procedures, counted keys, the event logs.

-- One row. Version is the host's schema, Marketing_Version the level of the marketing module. File_Number is the last upgrade that this file
-- has; Objects_Fingerprint stands for the views, triggers and procedures that were installed last, and Objects_Set says which set they are: one of a
-- lower number is never put in the place of one of a higher.
CREATE TABLE _Version (
  Version int NOT NULL,
  Marketing_Version int NOT NULL,
  File_Number int NOT NULL,
  Objects_Fingerprint nvarchar(40),
  Objects_Set int NOT NULL DEFAULT 0
);

-- The views, triggers and procedures that the program installed, each with the fingerprint of the text that it installed last.
CREATE TABLE _Installed (
  Kind nvarchar(10) NOT NULL,
  Name nvarchar(128) NOT NULL COLLATE NOCASE,
  Fingerprint nvarchar(40) NOT NULL,
  PRIMARY KEY (Kind, Name)
) WITHOUT ROWID;

-- One row: ONLINE or OFFLINE.
CREATE TABLE _Database_Status (
  Status nvarchar(20) NOT NULL
);
INSERT INTO _Database_Status VALUES ('ONLINE');

CREATE TABLE _Procedures (
  Name nvarchar(128) NOT NULL PRIMARY KEY COLLATE NOCASE,
  Header ntext NOT NULL,
  Body ntext NOT NULL,
  Version int NOT NULL
);

-- The last key handed out of each kind and the step to the next. Keys are never handed out twice.
CREATE TABLE _Keys (
  Key_Name nvarchar(50) NOT NULL PRIMARY KEY COLLATE NOCASE,
  Last_Value int NOT NULL,
  Step int NOT NULL
);
INSERT INTO _Keys VALUES ('TEMP', 0, -1), ('CUSTOMER', 1000, 1);

-- The host's general event log. EventType 6 errors, 7 texts, 8 exports, 9 marketing.
CREATE TABLE _Log (
  LogID integer PRIMARY KEY AUTOINCREMENT,
  Log_Date datetime NOT NULL,
  Username nvarchar(50) COLLATE NOCASE,
  EventType smallint NOT NULL,
  TableID smallint NOT NULL,
  TableKey nvarchar(25) COLLATE NOCASE,
  Details nvarchar(80) COLLATE NOCASE
);

-- Marketing events, tied to the campaign that was current.
CREATE TABLE _Marketing_Log (
  LogID integer PRIMARY KEY AUTOINCREMENT,
  Log_Date datetime NOT NULL,
  UserID nvarchar(50) COLLATE NOCASE,
  Event ntext COLLATE NOCASE,
  CampaignID int
);

-- Every marketing event appears in the history too; one that says a run began is the campaign's last run.
CREATE TRIGGER Marketing_Log_History AFTER INSERT ON _Marketing_Log
BEGIN
  INSERT INTO Marketing_Campaigns_History (Record_Date, CampaignID, Campaign_Name, Event, UserID)
  VALUES (new.Log_Date, new.CampaignID, (SELECT Campaign_Name FROM Marketing_Campaigns WHERE ID = new.CampaignID), new.Event, new.UserID);
  UPDATE Marketing_Campaigns SET Last_Run = new.Log_Date WHERE ID = new.CampaignID AND new.Event <> 'Not a Manager User';
END;
