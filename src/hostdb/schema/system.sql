-- Data about the database itself: versions, whether it is online, the procedures, the last keys, the event logs.

-- One row. Version is that of the host schema, Marketing_Version the level of the marketing module. File_Number is the
-- number of the last upgrade that this file has. Objects_Fingerprint identifies the views, triggers and procedures that
-- were installed last. Objects_Set is the number of their set. A set with a lower number never replaces one with a
-- higher number.
CREATE TABLE _Version (
  Version int NOT NULL,
  Marketing_Version int NOT NULL,
  File_Number int NOT NULL,
  Objects_Fingerprint nvarchar(40),
  Objects_Set int NOT NULL DEFAULT 0
);

-- The views, triggers and procedures that the program installed, each with the fingerprint of the text that was
-- installed last.
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

-- The last key of each kind that was given, and the step to the next one. No key is given twice.
CREATE TABLE _Keys (
  Key_Name nvarchar(50) NOT NULL PRIMARY KEY COLLATE NOCASE,
  Last_Value int NOT NULL,
  Step int NOT NULL
);
INSERT INTO _Keys VALUES ('TEMP', 0, -1), ('CUSTOMER', 1000, 1);

-- The host's general event log. EventType: 6 errors, 7 text messages, 8 exports, 9 marketing.
CREATE TABLE _Log (
  LogID integer PRIMARY KEY AUTOINCREMENT,
  Log_Date datetime NOT NULL,
  Username nvarchar(50) COLLATE NOCASE,
  EventType smallint NOT NULL,
  TableID smallint NOT NULL,
  TableKey nvarchar(25) COLLATE NOCASE,
  Details nvarchar(80) COLLATE NOCASE
);

-- Marketing events, each with the campaign that was current then.
CREATE TABLE _Marketing_Log (
  LogID integer PRIMARY KEY AUTOINCREMENT,
  Log_Date datetime NOT NULL,
  UserID nvarchar(50) COLLATE NOCASE,
  Event ntext COLLATE NOCASE,
  CampaignID int
);

-- Every marketing event appears in the history, too. An event that says that a run began sets the last run of the
-- campaign.
CREATE TRIGGER Marketing_Log_History AFTER INSERT ON _Marketing_Log
BEGIN
  INSERT INTO Marketing_Campaigns_History (Record_Date, CampaignID, Campaign_Name, Event, UserID)
  VALUES (new.Log_Date, new.CampaignID, (SELECT Campaign_Name FROM Marketing_Campaigns WHERE ID = new.CampaignID), new.Event, new.UserID);
  UPDATE Marketing_Campaigns SET Last_Run = new.Log_Date WHERE ID = new.CampaignID AND new.Event <> 'Not a Manager User';
END;
