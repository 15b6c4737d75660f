-- Saved campaigns and what happened to them.

CREATE TABLE Marketing_Campaigns (
  ID integer PRIMARY KEY AUTOINCREMENT,
  Version int,
  CampaignTypeID int,
  Campaign_Name nvarchar(255) COLLATE NOCASE,
  Campaign_Description ntext COLLATE NOCASE,
  Letter ntext,
  Email_Subject ntext,
  Email_Body ntext,
  SMS ntext,
  Step1 bit,
  Step2 bit,
  Step3 bit,
  Makes ntext COLLATE NOCASE,
  Date1 datetime,
  Date2 datetime,
  Records int,
  RecordsStart int,
  ReminderID int,
  Marketing bit,
  UseCustType bit,
  UseEnquirySource bit,
  UseLastKnownMileage bit,
  UseYearOfManufacture bit,
  WhenCustType int,
  WhenEnquirySource int,
  WhenLastKnownMileage int,
  WhenYearOfManufacture int,
  ValueCustType nvarchar(255) COLLATE NOCASE,
  ValueEnquirySource nvarchar(255) COLLATE NOCASE,
  ValueLastKnownMileage1 nvarchar(255),
  ValueLastKnownMileage2 nvarchar(255),
  ValueYearOfManufacture1 nvarchar(255),
  ValueYearOfManufacture2 nvarchar(255),
  Created_Date datetime,
  Created_By nvarchar(50) COLLATE NOCASE,
  Last_Run datetime
);

-- One row for each event of a campaign. Campaign_Name is the name that the campaign had then, so that the events of a
-- deleted campaign still have its name.
CREATE TABLE Marketing_Campaigns_History (
  ID integer PRIMARY KEY AUTOINCREMENT,
  Record_Date datetime NOT NULL,
  CampaignID int,
  Campaign_Name nvarchar(255) COLLATE NOCASE,
  Event ntext COLLATE NOCASE,
  UserID nvarchar(50) COLLATE NOCASE
);
