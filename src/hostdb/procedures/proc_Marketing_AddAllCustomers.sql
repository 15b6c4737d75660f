-- Selects customers for a campaign, one row a customer: all, lapsed (an invoice before the two dates and none between them), recent (an
-- invoice between them), or the top or bottom spenders (@Criteria customers from place @CriteriaStart on, by what was invoiced between the
-- dates; ties by customer key).
-- Left out are customers with the switch "No Marketing" (unless @IgnoreMarketingSwitch) and those who opted out (unless @IncludeOptedOut).
-- The earlier rows of the campaign are deleted; the new ones come without send flags. Returned are the rows of the campaign, RecordID
-- first.
-- The dates are text yyyy-mm-dd and may come in either order or be empty (no bound on that side). @Turnover is accepted and changes
-- nothing.
-- The parameters of vehicles are there so that all three selections can be called alike; here they change nothing.
CREATE PROCEDURE proc_Marketing_AddAllCustomers
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

-- All, lapsed, recent.
WITH Period (FirstDay, DayAfter) AS (
  SELECT CASE WHEN @FromDate <> '' AND @ToDate <> '' THEN min(@FromDate, @ToDate) ELSE @FromDate END,
    CASE WHEN @ToDate = '' THEN '9999-12-31'
      WHEN @FromDate = '' THEN date(@ToDate, '+1 day')
      ELSE date(max(@FromDate, @ToDate), '+1 day') END
)
INSERT INTO [Campaign Results]
  (CampaignID, UserID, Created_Date, Customer, Title, Firstname, Lastname, Address, Telephone, Contact, Mobile, Email,
  Cust_Type, Enquiry_Source, Last_Invoiced, Vehicle, Make, Model, Year, Last_Mileage, Recall_Date, Marketing,
  Consent_Response, Can_Send_SMS, Can_Send_Email, Can_Send_Letter)
SELECT @CampaignID, @UserID, (SELECT GetDate()), c.Customer, c.Title, c.Firstname, c.Lastname, c.Address, c.Telephone, c.Contact,
  c.Mobile, c.Email, c.Cust_Type, c.Enquiry_Source, c.Last_Invoiced, NULL, NULL, NULL, NULL, NULL, NULL,
  1 - c.No_Marketing, c.Consent_Response, c.Can_Send_SMS, c.Can_Send_Email, c.Can_Send_Letter
FROM Marketing_Customers c
WHERE @Top <> 1 AND @Bottom <> 1
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
  AND CASE WHEN @Lapsed = 1 THEN
      EXISTS (SELECT 1 FROM Services i WHERE i.Customer = c.Customer AND i.Record_Type = 0
              AND i.Invoice_Date < (SELECT FirstDay FROM Period))
      AND NOT EXISTS (SELECT 1 FROM Services i WHERE i.Customer = c.Customer AND i.Record_Type = 0
                      AND i.Invoice_Date >= (SELECT FirstDay FROM Period) AND i.Invoice_Date < (SELECT DayAfter FROM Period))
    WHEN @Recent = 1 THEN
      EXISTS (SELECT 1 FROM Services i WHERE i.Customer = c.Customer AND i.Record_Type = 0
              AND i.Invoice_Date >= (SELECT FirstDay FROM Period) AND i.Invoice_Date < (SELECT DayAfter FROM Period))
    ELSE 1 END
ORDER BY c.Customer;

-- Top, bottom: the ranking is made first, the filters narrow it.
WITH Period (FirstDay, DayAfter) AS (
  SELECT CASE WHEN @FromDate <> '' AND @ToDate <> '' THEN min(@FromDate, @ToDate) ELSE @FromDate END,
    CASE WHEN @ToDate = '' THEN '9999-12-31'
      WHEN @FromDate = '' THEN date(@ToDate, '+1 day')
      ELSE date(max(@FromDate, @ToDate), '+1 day') END
),
Ranked (Customer, Position) AS (
  SELECT i.Customer, round(sum(i.Total), 4) * CASE WHEN @Top = 1 THEN -1 ELSE 1 END AS Position
  FROM Services i
  WHERE i.Record_Type = 0
    AND i.Invoice_Date >= (SELECT FirstDay FROM Period) AND i.Invoice_Date < (SELECT DayAfter FROM Period)
    AND EXISTS (SELECT 1 FROM Customers c WHERE c.Customer = i.Customer
                AND (c.No_Marketing = 0 OR @IgnoreMarketingSwitch = 1)
                AND (@IncludeOptedOut = 1 OR ifnull(c.Consent_Response, 0) <> 2))
  GROUP BY i.Customer
  ORDER BY Position, i.Customer
  LIMIT max(CAST(@Criteria AS int), 0) OFFSET max(CAST(@CriteriaStart AS int), 1) - 1
)
INSERT INTO [Campaign Results]
  (CampaignID, UserID, Created_Date, Customer, Title, Firstname, Lastname, Address, Telephone, Contact, Mobile, Email,
  Cust_Type, Enquiry_Source, Last_Invoiced, Vehicle, Make, Model, Year, Last_Mileage, Recall_Date, Marketing,
  Consent_Response, Can_Send_SMS, Can_Send_Email, Can_Send_Letter)
SELECT @CampaignID, @UserID, (SELECT GetDate()), c.Customer, c.Title, c.Firstname, c.Lastname, c.Address, c.Telephone, c.Contact,
  c.Mobile, c.Email, c.Cust_Type, c.Enquiry_Source, c.Last_Invoiced, NULL, NULL, NULL, NULL, NULL, NULL,
  1 - c.No_Marketing, c.Consent_Response, c.Can_Send_SMS, c.Can_Send_Email, c.Can_Send_Letter
FROM Ranked r
CROSS JOIN Marketing_Customers c ON c.Customer = r.Customer
WHERE (@Top = 1 OR @Bottom = 1)
  AND CASE WHEN @UseCustType = 0 THEN 1
    WHEN @WhenCustType = 0 THEN ifnull(c.Cust_Type, '') = @ValueCustType COLLATE NOCASE
    WHEN @WhenCustType = 1 THEN ifnull(c.Cust_Type, '') <> @ValueCustType COLLATE NOCASE
    ELSE 1 END
  AND CASE WHEN @UseEnquirySource = 0 THEN 1
    WHEN @WhenEnquirySource = 0 THEN ifnull(c.Enquiry_Source, '') = @ValueEnquirySource COLLATE NOCASE
    WHEN @WhenEnquirySource = 1 THEN ifnull(c.Enquiry_Source, '') <> @ValueEnquirySource COLLATE NOCASE
    ELSE 1 END
ORDER BY r.Position, r.Customer;

-- A run of a saved campaign is kept in its history.
INSERT INTO Marketing_Campaigns_History (Record_Date, CampaignID, Campaign_Name, Event, UserID)
SELECT GetDate(), ID, Campaign_Name, 'Query run' || CASE WHEN @CampaignType <> '' THEN ': ' || @CampaignType ELSE '' END, @UserID
FROM Marketing_Campaigns WHERE ID = @CampaignID;
UPDATE Marketing_Campaigns SET Last_Run = GetDate() WHERE ID = @CampaignID;

SELECT * FROM Campaign_Results_Grid WHERE CampaignID = @CampaignID ORDER BY RecordID;
