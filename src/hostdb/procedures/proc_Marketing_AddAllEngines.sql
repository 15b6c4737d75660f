-- Selects the engines of boats for a campaign, one row an engine with its customer; Vehicle is the boat, Last_Mileage the hours run.
-- @Makes are makes of engines, separated by commas, exact but for case. Mileage (hours), year and model are those of the engine and are
-- compared as for vehicles.
-- Left out are customers with the switch "No Marketing" (unless @IgnoreMarketingSwitch) and those who opted out (unless @IncludeOptedOut).
-- The earlier rows of the campaign are deleted; the new ones come without send flags. Returned are the rows of the campaign, RecordID
-- first.
-- The dates are text yyyy-mm-dd and may come in either order or be empty (no bound on that side). @Turnover is accepted and changes
-- nothing.
-- The parameters of customer and reminder queries are there so that all three selections can be called alike; here they change nothing.
CREATE PROCEDURE proc_Marketing_AddAllEngines
  @CampaignID int,
  @UserID nvarchar(50),
  @FromDate nvarchar(10) = '',
  @ToDate nvarchar(10) = '',
  @Lapsed smallint = 0,
  @Recent smallint = 0,
  @Top smallint = 0,
  @Bottom smallint = 0,
  @Criteria float = 0,
  @CriteriaStart float = 1,
  @Turnover smallint = 0,
  @Makes nvarchar(max) = NULL,
  @Recall_ID int = 0,
  @IgnoreMarketingSwitch smallint = 0,
  @UseCustType smallint = 0,
  @WhenCustType smallint = -1,
  @ValueCustType nvarchar(50) = '',
  @UseEnquirySource smallint = 0,
  @WhenEnquirySource smallint = -1,
  @ValueEnquirySource nvarchar(50) = '',
  @FilterMileage smallint = 0,
  @FromMileage float = NULL,
  @ToMileage float = NULL,
  @FilterYear smallint = 0,
  @FromYear float = NULL,
  @ToYear float = NULL,
  @FilterModel smallint = 0,
  @ValueModel nvarchar(max) = '',
  @CampaignType nvarchar(50) = '',
  @IncludeOptedOut bit = 0
AS
DELETE FROM [Campaign Results] WHERE CampaignID = @CampaignID;

WITH RECURSIVE Chosen (Make, Rest) AS (
  SELECT '', ifnull(@Makes, '') || ','
  UNION ALL
  SELECT trim(substr(Rest, 1, instr(Rest, ',') - 1)), substr(Rest, instr(Rest, ',') + 1) FROM Chosen WHERE Rest <> ''
)
INSERT INTO [Campaign Results]
  (CampaignID, UserID, Created_Date, Customer, Title, Firstname, Lastname, Address, Telephone, Contact, Mobile, Email,
  Cust_Type, Enquiry_Source, Last_Invoiced, Vehicle, Make, Model, Year, Last_Mileage, Recall_Date, Marketing,
  Consent_Response, Can_Send_SMS, Can_Send_Email, Can_Send_Letter)
SELECT @CampaignID, @UserID, (SELECT GetDate()), c.Customer, c.Title, c.Firstname, c.Lastname, c.Address, c.Telephone, c.Contact,
  c.Mobile, c.Email, c.Cust_Type, c.Enquiry_Source, c.Last_Invoiced, v.Vehicle, v.Make, v.Model, v.Year, v.Last_Mileage, NULL,
  1 - c.No_Marketing, c.Consent_Response, c.Can_Send_SMS, c.Can_Send_Email, c.Can_Send_Letter
FROM Engines v
CROSS JOIN Marketing_Customers c ON c.Customer = v.Customer
WHERE 1
  AND CASE WHEN @Makes IS NULL THEN 1 ELSE v.Make IN (SELECT Make FROM Chosen WHERE Make <> '') END
  AND CASE WHEN @FilterMileage = 0 OR (@FromMileage IS NULL AND @ToMileage IS NULL) THEN 1
    WHEN @ToMileage IS NULL THEN v.Last_Mileage > @FromMileage
    WHEN @FromMileage IS NULL THEN v.Last_Mileage < @ToMileage
    ELSE v.Last_Mileage BETWEEN @FromMileage AND @ToMileage END
  AND CASE WHEN @FilterYear = 0 OR (@FromYear IS NULL AND @ToYear IS NULL) THEN 1
    WHEN ifnull(v.Year, 0) <= ifnull(@FromYear, 0) THEN 0
    WHEN @ToYear IS NULL THEN 1
    WHEN @FromYear IS NULL OR @ToYear = @FromYear + 1 THEN v.Year <= @ToYear
    ELSE v.Year < @ToYear END
  AND CASE WHEN @FilterModel = 0 THEN 1 ELSE CharIndex(trim(@ValueModel), v.Model) > 0 END
  AND (c.No_Marketing = 0 OR @IgnoreMarketingSwitch = 1)
  AND (@IncludeOptedOut = 1 OR ifnull(c.Consent_Response, 0) <> 2)
  AND CASE WHEN @UseCustType = 0 THEN 1
    WHEN @WhenCustType = 0 THEN ifnull(c.Cust_Type, '') = @ValueCustType COLLATE NOCASE
    WHEN @WhenCustType = 1 THEN ifnull(c.Cust_Type, '') <> @ValueCustType COLLATE NOCASE
    ELSE 1 END
  AND CASE WHEN @UseEnquirySource = 0 THEN 1
    WHEN @WhenEnquirySource = 0 THEN ifnull(c.Enquiry_Source, '') = @ValueEnquirySource COLLATE NOCASE
    WHEN @WhenEnquirySource = 1 THEN ifnull(c.Enquiry_Source, '') <> @ValueEnquirySource COLLATE NOCASE
    ELSE 1 END
ORDER BY v.Customer, v.EngineID;

-- A run of a saved campaign is kept in its history.
INSERT INTO Marketing_Campaigns_History (Record_Date, CampaignID, Campaign_Name, Event, UserID)
SELECT GetDate(), ID, Campaign_Name, 'Query run' || CASE WHEN @CampaignType <> '' THEN ': ' || @CampaignType ELSE '' END, @UserID
FROM Marketing_Campaigns WHERE ID = @CampaignID;
UPDATE Marketing_Campaigns SET Last_Run = GetDate() WHERE ID = @CampaignID;

SELECT * FROM Campaign_Results_Grid WHERE CampaignID = @CampaignID ORDER BY RecordID;
