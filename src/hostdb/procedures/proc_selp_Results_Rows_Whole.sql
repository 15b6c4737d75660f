-- Returns all of some rows of a campaign, so that the rows can be restored after they are deleted. Only
-- proc_addp_Results_Rows_Back reads Whole. Newest_Row is the highest key of a row of the campaign. @RecordIDs holds the
-- keys of the rows, separated by commas.
CREATE PROCEDURE proc_selp_Results_Rows_Whole
  @CampaignID int,
  @RecordIDs nvarchar(max)
AS
SELECT r.RecordID,
  json_array(r.RecordID, r.Customer, r.Title, r.Firstname, r.Lastname, r.Address, r.Telephone, r.Contact, r.Mobile, r.Email, r.Cust_Type,
    r.Enquiry_Source, r.Last_Invoiced, r.Vehicle, r.Make, r.Model, r.Year, r.Last_Mileage, r.Recall_Date, r.Marketing, r.UserID, r.Created_Date,
    r.Consent_Response, r.Can_Send_SMS, r.Can_Send_Email, r.Can_Send_Letter, json(s.State)) AS Whole,
  (SELECT max(RecordID) FROM [Campaign Results] WHERE CampaignID = @CampaignID) AS Newest_Row
FROM json_each('[' || @RecordIDs || ']') k
CROSS JOIN [Campaign Results] r ON r.RecordID = k.value
CROSS JOIN Campaign_Results_States s ON s.RecordID = r.RecordID
WHERE r.CampaignID = @CampaignID;
