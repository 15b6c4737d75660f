-- Saves a new campaign and adds a row to the history. Returns the number of the campaign in one row with one column.
CREATE PROCEDURE proc_addp_Marketing_Campaign
  @Version int,
  @CampaignTypeID int,
  @Campaign_Name nvarchar(255),
  @Campaign_Description nvarchar(max),
  @Letter nvarchar(max),
  @Email_Subject nvarchar(max),
  @Email_Body nvarchar(max),
  @SMS nvarchar(max),
  @Step1 bit,
  @Step2 bit,
  @Step3 bit,
  @Makes nvarchar(max),
  @Date1 datetime,
  @Date2 datetime,
  @Records int,
  @RecordsStart int,
  @ReminderID int,
  @Marketing bit,
  @UseCustType bit,
  @UseEnquirySource bit,
  @UseLastKnownMileage bit,
  @UseYearOfManufacture bit,
  @WhenCustType int,
  @WhenEnquirySource int,
  @WhenLastKnownMileage int,
  @WhenYearOfManufacture int,
  @ValueCustType nvarchar(255),
  @ValueEnquirySource nvarchar(255),
  @ValueLastKnownMileage1 nvarchar(255),
  @ValueLastKnownMileage2 nvarchar(255),
  @ValueYearOfManufacture1 nvarchar(255),
  @ValueYearOfManufacture2 nvarchar(255),
  @UserID nvarchar(50)
AS
INSERT INTO Marketing_Campaigns (
  Version, CampaignTypeID, Campaign_Name, Campaign_Description, Letter, Email_Subject, Email_Body, SMS, Step1, Step2, Step3,
  Makes, Date1, Date2, Records, RecordsStart, ReminderID, Marketing, UseCustType, UseEnquirySource, UseLastKnownMileage,
  UseYearOfManufacture, WhenCustType, WhenEnquirySource, WhenLastKnownMileage, WhenYearOfManufacture, ValueCustType,
  ValueEnquirySource, ValueLastKnownMileage1, ValueLastKnownMileage2, ValueYearOfManufacture1, ValueYearOfManufacture2,
  Created_Date, Created_By)
VALUES (
  @Version, @CampaignTypeID, @Campaign_Name, @Campaign_Description, @Letter, @Email_Subject, @Email_Body, @SMS, @Step1, @Step2,
  @Step3, @Makes, @Date1, @Date2, @Records, @RecordsStart, @ReminderID, @Marketing, @UseCustType, @UseEnquirySource,
  @UseLastKnownMileage, @UseYearOfManufacture, @WhenCustType, @WhenEnquirySource, @WhenLastKnownMileage, @WhenYearOfManufacture,
  @ValueCustType, @ValueEnquirySource, @ValueLastKnownMileage1, @ValueLastKnownMileage2, @ValueYearOfManufacture1,
  @ValueYearOfManufacture2, GetDate(), @UserID);
INSERT INTO Marketing_Campaigns_History (Record_Date, CampaignID, Campaign_Name, Event, UserID)
SELECT GetDate(), ID, Campaign_Name, 'Campaign added', @UserID FROM Marketing_Campaigns WHERE ID = last_insert_rowid();
SELECT CampaignID AS ID FROM Marketing_Campaigns_History WHERE ID = last_insert_rowid();
