-- Returns one saved campaign, or no row when it is not stored.
CREATE PROCEDURE proc_selp_Marketing_Campaign
  @CampaignID int
AS
SELECT
  ID, Version, CampaignTypeID, Campaign_Name, Campaign_Description, Letter, Email_Subject, Email_Body, SMS, Step1, Step2, Step3,
  Makes, Date1, Date2, Records, RecordsStart, ReminderID, Marketing, UseCustType, UseEnquirySource, UseLastKnownMileage,
  UseYearOfManufacture, WhenCustType, WhenEnquirySource, WhenLastKnownMileage, WhenYearOfManufacture, ValueCustType,
  ValueEnquirySource, ValueLastKnownMileage1, ValueLastKnownMileage2, ValueYearOfManufacture1, ValueYearOfManufacture2,
  Created_Date, Created_By, Last_Run
FROM Marketing_Campaigns WHERE ID = @CampaignID;
