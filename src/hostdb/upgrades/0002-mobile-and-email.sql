-- Mobile and Email of results rows are never NULL: what is not known is empty.
CREATE TABLE New_Campaign_Results (
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

INSERT INTO New_Campaign_Results (
  RecordID, CampaignID, Customer, Title, Firstname, Lastname, Address, Telephone, Contact, Mobile, Email, Cust_Type, Enquiry_Source,
  Last_Invoiced, Vehicle, Make, Model, Year, Last_Mileage, Recall_Date, Marketing, Send_SMS, Send_Email, Send_Letter, UserID, Created_Date,
  Processed, Processed_Date, Consent_Response, Can_Send_SMS, Can_Send_Email, Can_Send_Letter)
SELECT
  RecordID, CampaignID, Customer, Title, Firstname, Lastname, Address, Telephone, Contact, ifnull(Mobile, ''), ifnull(Email, ''), Cust_Type,
  Enquiry_Source, Last_Invoiced, Vehicle, Make, Model, Year, Last_Mileage, Recall_Date, Marketing, Send_SMS, Send_Email, Send_Letter,
  UserID, Created_Date, Processed, Processed_Date, Consent_Response, Can_Send_SMS, Can_Send_Email, Can_Send_Letter
FROM [Campaign Results] ORDER BY RecordID;

-- The last key goes along: also those of rows that are gone are never used again.
DELETE FROM sqlite_sequence WHERE name = 'New_Campaign_Results';
INSERT INTO sqlite_sequence (name, seq) SELECT 'New_Campaign_Results', seq FROM sqlite_sequence WHERE name = 'Campaign Results';

DROP TABLE [Campaign Results];
ALTER TABLE New_Campaign_Results RENAME TO [Campaign Results];
CREATE INDEX Campaign_Results_Campaign ON [Campaign Results] (CampaignID);
CREATE INDEX Campaign_Results_Customer ON [Campaign Results] (CampaignID, Customer);
