-- What was produced for customers: the letters to be printed, and the text messages and e-mails that were sent.

-- The letters of the last run or preview of each session.
CREATE TABLE Letters (
  LetterID integer PRIMARY KEY AUTOINCREMENT,
  SessionID nvarchar(50) COLLATE NOCASE,
  Letter ntext,
  NameAddress ntext COLLATE NOCASE,
  Contact nvarchar(250) COLLATE NOCASE,
  Telephone nvarchar(50) COLLATE NOCASE,
  Mobile nvarchar(50) COLLATE NOCASE,
  Vehicle nvarchar(20) COLLATE NOCASE
);
CREATE INDEX Letters_Session ON Letters (SessionID);

CREATE TABLE SMS (
  RecordID integer PRIMARY KEY AUTOINCREMENT,
  Customer nvarchar(50) COLLATE NOCASE,
  Mobile_Number nvarchar(50) COLLATE NOCASE,
  Message ntext COLLATE NOCASE,
  Status smallint,
  MessageID int,
  UserID nvarchar(50) COLLATE NOCASE,
  Created_Date datetime NOT NULL
);

CREATE TABLE Emails (
  RecordID integer PRIMARY KEY AUTOINCREMENT,
  AC_Ref nvarchar(15) COLLATE NOCASE,
  AC_Type smallint,
  Email_To nvarchar(80) COLLATE NOCASE,
  Email_Subject nvarchar(60) COLLATE NOCASE,
  Email_Text ntext COLLATE NOCASE,
  Attachments ntext COLLATE NOCASE,
  Created_Date datetime NOT NULL
);
