-- Makes a new campaign from a saved one, with all its settings and templates, under another name. The results are not
-- copied, so no step of the copy counts as completed. Adds a row to the history. Returns the number of the new
-- campaign. A campaign that is not stored is an error.
CREATE PROCEDURE proc_copy_Marketing_Campaign
  @CampaignID int,
  @Campaign_Name nvarchar(255),
  @UserID nvarchar(50)
AS
SELECT RaiseError(50000, 'The campaign is no longer stored.')
WHERE NOT EXISTS (SELECT 1 FROM Marketing_Campaigns WHERE ID = @CampaignID);
INSERT INTO Marketing_Campaigns (
  Campaign_Name, Step1, Step2, Step3, Version, CampaignTypeID, Campaign_Description, Letter, Email_Subject, Email_Body, SMS,
  Makes, Date1, Date2, Records, RecordsStart, ReminderID, Marketing, UseCustType, UseEnquirySource, UseLastKnownMileage,
  UseYearOfManufacture, WhenCustType, WhenEnquirySource, WhenLastKnownMileage, WhenYearOfManufacture, ValueCustType,
  ValueEnquirySource, ValueLastKnownMileage1, ValueLastKnownMileage2, ValueYearOfManufacture1, ValueYearOfManufacture2,
  Created_Date, Created_By)
SELECT
  @Campaign_Name, 0, 0, 0, Version, CampaignTypeID, Campaign_Description, Letter, Email_Subject, Email_Body, SMS, Makes, Date1,
  Date2, Records, RecordsStart, ReminderID, Marketing, UseCustType, UseEnquirySource, UseLastKnownMileage, UseYearOfManufacture,
  WhenCustType, WhenEnquirySource, WhenLastKnownMileage, WhenYearOfManufacture, ValueCustType, ValueEnquirySource,
  ValueLastKnownMileage1, ValueLastKnownMileage2, ValueYearOfManufacture1, ValueYearOfManufacture2, GetDate(), @UserID
FROM Marketing_Campaigns WHERE ID = @CampaignID;
INSERT INTO Marketing_Campaigns_History (Record_Date, CampaignID, Campaign_Name, Event, UserID)
SELECT GetDate(), copied.ID, copied.Campaign_Name, 'Copied from ' || ifnull(saved.Campaign_Name, ''), @UserID
FROM Marketing_Campaigns copied
CROSS JOIN Marketing_Campaigns saved ON saved.ID = @CampaignID
WHERE copied.ID = last_insert_rowid();
SELECT CampaignID AS ID FROM Marketing_Campaigns_History WHERE ID = last_insert_rowid();
