-- The rows that a query selected for a campaign, and their counters.

-- A key is never used again, so that a note about a row, such as a message on its way, never refers to another row.
-- Mobile and Email are empty when they are not known, also when somebody writes NULL. Rules compare these columns, and
-- no comparison with NULL is true.
CREATE TABLE [Campaign Results] (
  RecordID integer PRIMARY KEY AUTOINCREMENT,
  CampaignID int NOT NULL,
  Customer int,
  Title nvarchar(20) COLLATE NOCASE,
  Firstname nvarchar(100) COLLATE NOCASE,
  Lastname nvarchar(100) COLLATE NOCASE,
  Address nvarchar(700) COLLATE NOCASE,
  Telephone nvarchar(50) COLLATE NOCASE,
  Contact nvarchar(250) COLLATE NOCASE,
  Mobile nvarchar(50) NOT NULL ON CONFLICT REPLACE DEFAULT '' COLLATE NOCASE,
  Email nvarchar(255) NOT NULL ON CONFLICT REPLACE DEFAULT '' COLLATE NOCASE,
  Cust_Type nvarchar(50) COLLATE NOCASE,
  Enquiry_Source nvarchar(50) COLLATE NOCASE,
  Last_Invoiced date,
  Vehicle nvarchar(20) COLLATE NOCASE,
  Make nvarchar(50) COLLATE NOCASE,
  Model nvarchar(100) COLLATE NOCASE,
  Year int,
  Last_Mileage int,
  Recall_Date date,
  Marketing bit,
  Send_SMS bit NOT NULL DEFAULT 0 CHECK (Send_SMS IN (0, 1)),
  Send_Email bit NOT NULL DEFAULT 0 CHECK (Send_Email IN (0, 1)),
  Send_Letter bit NOT NULL DEFAULT 0 CHECK (Send_Letter IN (0, 1)),
  UserID nvarchar(50) COLLATE NOCASE,
  Created_Date datetime,
  Processed bit NOT NULL DEFAULT 0 CHECK (Processed IN (0, 1)),
  Processed_Date datetime,
  Consent_Response int,
  Can_Send_SMS bit,
  Can_Send_Email bit,
  Can_Send_Letter bit
);
-- The first index gives the rows of a campaign in the order of their selection. The second one serves the runs, which
-- go through the rows by customer.
CREATE INDEX Campaign_Results_Campaign ON [Campaign Results] (CampaignID);
CREATE INDEX Campaign_Results_Customer ON [Campaign Results] (CampaignID, Customer);

-- The rows as the results grid shows them.
CREATE VIEW Campaign_Results_Grid AS
SELECT RecordID, Customer, Title, Firstname, Lastname, Send_SMS, Send_Email, Send_Letter, Processed, Mobile, Email, Vehicle, Make, Model, Year,
  Last_Mileage, Recall_Date, Last_Invoiced, Address, Telephone, Contact, Cust_Type, Enquiry_Source, Marketing, Processed_Date,
  Can_Send_SMS AS [SMS Opt-In], Can_Send_Email AS [Email Opt-In], Can_Send_Letter AS [Letter Opt-In],
  UserID, Created_Date, Consent_Response, Can_Send_SMS, Can_Send_Email, Can_Send_Letter, CampaignID
FROM [Campaign Results];

-- The counters of a campaign. The triggers below keep them exact, whoever changes a row, so the rows are never counted.
-- A campaign without a counted row has no counters.
CREATE TABLE Campaign_Results_Counters (
  CampaignID integer PRIMARY KEY,
  ByLetter int NOT NULL DEFAULT 0,
  BySMS int NOT NULL DEFAULT 0,
  BySMS_Processed int NOT NULL DEFAULT 0,
  ByEmail int NOT NULL DEFAULT 0,
  ByEmail_Processed int NOT NULL DEFAULT 0
);

-- A selection adds rows without send flags. This trigger does nothing for them.
CREATE TRIGGER Campaign_Results_Count_Insert AFTER INSERT ON [Campaign Results]
WHEN new.Send_SMS OR new.Send_Email OR new.Send_Letter
BEGIN
  -- @include count_new_row
END;

CREATE TRIGGER Campaign_Results_Count_Delete AFTER DELETE ON [Campaign Results]
WHEN old.Send_SMS OR old.Send_Email OR old.Send_Letter
BEGIN
  -- @include discount_old_row
  -- @include drop_empty_counters
END;

CREATE TRIGGER Campaign_Results_Count_Flags AFTER UPDATE OF Send_SMS, Send_Email, Send_Letter, Processed ON [Campaign Results]
WHEN new.CampaignID = old.CampaignID
  AND (new.Send_SMS <> old.Send_SMS OR new.Send_Email <> old.Send_Email OR new.Send_Letter <> old.Send_Letter
       OR new.Processed <> old.Processed)
BEGIN
  -- @include count_new_row
  -- @include discount_old_row
END;

-- When an unsaved campaign is saved, its rows get another campaign number. The counters move to that number, and so do
-- the entries of the send journal (see Send_Journal_Row_Moved).
CREATE TRIGGER Campaign_Results_Count_Move AFTER UPDATE OF CampaignID ON [Campaign Results]
WHEN new.CampaignID <> old.CampaignID
  AND (new.Send_SMS OR new.Send_Email OR new.Send_Letter OR old.Send_SMS OR old.Send_Email OR old.Send_Letter)
BEGIN
  -- @include count_new_row
  -- @include discount_old_row
  -- @include drop_empty_counters
END;

CREATE TRIGGER Campaign_Results_Processed AFTER UPDATE OF Processed ON [Campaign Results]
WHEN new.Processed <> old.Processed
BEGIN
  UPDATE [Campaign Results] SET Processed_Date = CASE WHEN new.Processed THEN GetDate() END WHERE RecordID = new.RecordID;
END;
