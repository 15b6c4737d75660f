-- Overwrites a saved campaign and adds a row to the history. A campaign that is not stored is an error.
CREATE PROCEDURE proc_updp_Marketing_Campaign
  @CampaignID int,
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
SELECT RaiseError(50000, 'The campaign is no longer stored.')
WHERE NOT EXISTS (SELECT 1 FROM Marketing_Campaigns WHERE ID = @CampaignID);
UPDATE Marketing_Campaigns SET
  Version = @Version, CampaignTypeID = @CampaignTypeID, Campaign_Name = @Campaign_Name, Campaign_Description =
  @Campaign_Description, Letter = @Letter, Email_Subject = @Email_Subject, Email_Body = @Email_Body, SMS = @SMS, Step1 = @Step1,
  Step2 = @Step2, Step3 = @Step3, Makes = @Makes, Date1 = @Date1, Date2 = @Date2, Records = @Records, RecordsStart =
  @RecordsStart, ReminderID = @ReminderID, Marketing = @Marketing, UseCustType = @UseCustType, UseEnquirySource =
  @UseEnquirySource, UseLastKnownMileage = @UseLastKnownMileage, UseYearOfManufacture = @UseYearOfManufacture, WhenCustType =
  @WhenCustType, WhenEnquirySource = @WhenEnquirySource, WhenLastKnownMileage = @WhenLastKnownMileage, WhenYearOfManufacture =
  @WhenYearOfManufacture, ValueCustType = @ValueCustType, ValueEnquirySource = @ValueEnquirySource, ValueLastKnownMileage1 =
  @ValueLastKnownMileage1, ValueLastKnownMileage2 = @ValueLastKnownMileage2, ValueYearOfManufacture1 = @ValueYearOfManufacture1,
  ValueYearOfManufacture2 = @ValueYearOfManufacture2
WHERE ID = @CampaignID;
INSERT INTO Marketing_Campaigns_History (Record_Date, CampaignID, Campaign_Name, Event, UserID)
SELECT GetDate(), ID, Campaign_Name, 'Campaign updated', @UserID FROM Marketing_Campaigns WHERE ID = @CampaignID;
