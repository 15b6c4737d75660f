-- @include kept_fields
INSERT INTO @Kept (RecordID, Record)
SELECT f.RecordID, f.Record
FROM (SELECT Record, CASE Field WHEN 0 THEN CAST(Value AS int) END AS RecordID FROM @Fields WHERE Field = 0) f
WHERE NOT EXISTS (SELECT 1 FROM [Campaign Results] r WHERE r.RecordID = f.RecordID)
  -- @include same_rows_as_then
;
-- @include kept_journal
SET IDENTITY_INSERT [Campaign Results] ON;
INSERT INTO [Campaign Results] (RecordID, CampaignID, Send_SMS, Send_Email, Send_Letter, Processed, Processed_Date, Customer, Title, Firstname, Lastname, Address, Telephone, Contact, Mobile, Email, Cust_Type, Enquiry_Source, Last_Invoiced, Vehicle, Make, Model, Year, Last_Mileage, Recall_Date, Marketing, UserID, Created_Date, Consent_Response, Can_Send_SMS, Can_Send_Email, Can_Send_Letter)
SELECT k.RecordID, @CampaignID,
  CAST(max(CASE Field WHEN 1 THEN Value END) AS int),
  CAST(max(CASE Field WHEN 2 THEN Value END) AS int),
  CAST(max(CASE Field WHEN 3 THEN Value END) AS int),
  CAST(max(CASE Field WHEN 4 THEN Value END) AS int),
  CONVERT(datetime, max(CASE Field WHEN 5 THEN Value END), 121),
  CAST(max(CASE Field WHEN 18 THEN Value END) AS int),
  max(CASE Field WHEN 19 THEN Value END),
  max(CASE Field WHEN 20 THEN Value END),
  max(CASE Field WHEN 21 THEN Value END),
  max(CASE Field WHEN 22 THEN Value END),
  max(CASE Field WHEN 23 THEN Value END),
  max(CASE Field WHEN 24 THEN Value END),
  max(CASE Field WHEN 25 THEN Value END),
  max(CASE Field WHEN 26 THEN Value END),
  max(CASE Field WHEN 27 THEN Value END),
  max(CASE Field WHEN 28 THEN Value END),
  CONVERT(datetime, max(CASE Field WHEN 29 THEN Value END), 120),
  max(CASE Field WHEN 30 THEN Value END),
  max(CASE Field WHEN 31 THEN Value END),
  max(CASE Field WHEN 32 THEN Value END),
  CAST(max(CASE Field WHEN 33 THEN Value END) AS int),
  CAST(max(CASE Field WHEN 34 THEN Value END) AS int),
  CONVERT(datetime, max(CASE Field WHEN 35 THEN Value END), 120),
  CAST(max(CASE Field WHEN 36 THEN Value END) AS int),
  max(CASE Field WHEN 37 THEN Value END),
  CONVERT(datetime, max(CASE Field WHEN 38 THEN Value END), 121),
  CAST(max(CASE Field WHEN 39 THEN Value END) AS int),
  CAST(max(CASE Field WHEN 40 THEN Value END) AS int),
  CAST(max(CASE Field WHEN 41 THEN Value END) AS int),
  CAST(max(CASE Field WHEN 42 THEN Value END) AS int)
FROM @Kept k JOIN @Fields f ON f.Record = k.Record GROUP BY k.RecordID;
SET IDENTITY_INSERT [Campaign Results] OFF;
SELECT RecordID FROM @Kept;
