-- The rows are locked first, because the caller deletes them afterwards.
-- @include held_rows
-- A record that Fields_Of can split: the fields of the state, then those of the row.
SELECT r.RecordID,
  STUFF(s.State, LEN(s.State), 1, '')
    + isnull(CAST(r.Customer AS nvarchar(11)) + '|', '~n|')
    + dbo.Packed(r.Title)
    + dbo.Packed(r.Firstname)
    + dbo.Packed(r.Lastname)
    + dbo.Packed(r.Address)
    + dbo.Packed(r.Telephone)
    + dbo.Packed(r.Contact)
    + dbo.Packed(r.Mobile)
    + dbo.Packed(r.Email)
    + dbo.Packed(r.Cust_Type)
    + dbo.Packed(r.Enquiry_Source)
    + isnull(CONVERT(nvarchar(10), r.Last_Invoiced, 120) + '|', '~n|')
    + dbo.Packed(r.Vehicle)
    + dbo.Packed(r.Make)
    + dbo.Packed(r.Model)
    + isnull(CAST(r.Year AS nvarchar(11)) + '|', '~n|')
    + isnull(CAST(r.Last_Mileage AS nvarchar(11)) + '|', '~n|')
    + isnull(CONVERT(nvarchar(10), r.Recall_Date, 120) + '|', '~n|')
    + isnull(CAST(r.Marketing AS nvarchar(11)) + '|', '~n|')
    + dbo.Packed(r.UserID)
    + isnull(CONVERT(nvarchar(23), r.Created_Date, 121) + '|', '~n|')
    + isnull(CAST(r.Consent_Response AS nvarchar(11)) + '|', '~n|')
    + isnull(CAST(r.Can_Send_SMS AS nvarchar(11)) + '|', '~n|')
    + isnull(CAST(r.Can_Send_Email AS nvarchar(11)) + '|', '~n|')
    + isnull(CAST(r.Can_Send_Letter AS nvarchar(11)) + '|', '~n|')
    + '}' AS Whole,
  (SELECT max(RecordID) FROM [Campaign Results] WHERE CampaignID = @CampaignID) AS Newest_Row
FROM @Held h
JOIN [Campaign Results] r ON r.RecordID = h.RecordID
JOIN Campaign_Results_States s ON s.RecordID = r.RecordID;
