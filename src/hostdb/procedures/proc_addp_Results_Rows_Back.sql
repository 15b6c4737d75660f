-- Restores deleted rows of a campaign, with their keys, their flags and their entries in the send journal. @Rows is
-- [whole, ...], as proc_selp_Results_Rows_Whole returned them. Restores nothing when the campaign was deleted, or when
-- a query gave it rows with keys above @NewestRow. Returns the keys of the restored rows.
CREATE PROCEDURE proc_addp_Results_Rows_Back
  @CampaignID int,
  @NewestRow int,
  @Rows nvarchar(max)
AS
INSERT INTO Send_Journal (RecordID, CampaignID, Channel, State, UserID, Changed, Reason)
SELECT k.value ->> '$[0]', @CampaignID,
  -- @include journal_of_state
FROM json_each(@Rows) k
CROSS JOIN json_each(k.value, '$[26][5]') j
WHERE NOT EXISTS (SELECT 1 FROM [Campaign Results] r WHERE r.RecordID = k.value ->> '$[0]')
  -- @include same_rows_as_then
ON CONFLICT DO NOTHING;
INSERT INTO [Campaign Results] (RecordID, CampaignID, Customer, Title, Firstname, Lastname, Address, Telephone, Contact, Mobile, Email, Cust_Type,
  Enquiry_Source, Last_Invoiced, Vehicle, Make, Model, Year, Last_Mileage, Recall_Date, Marketing, UserID, Created_Date, Consent_Response,
  Can_Send_SMS, Can_Send_Email, Can_Send_Letter, Send_SMS, Send_Email, Send_Letter, Processed, Processed_Date)
SELECT value ->> '$[0]', @CampaignID, value ->> '$[1]', value ->> '$[2]', value ->> '$[3]', value ->> '$[4]', value ->> '$[5]', value ->> '$[6]',
  value ->> '$[7]', value ->> '$[8]', value ->> '$[9]', value ->> '$[10]', value ->> '$[11]', value ->> '$[12]', value ->> '$[13]',
  value ->> '$[14]', value ->> '$[15]', value ->> '$[16]', value ->> '$[17]', value ->> '$[18]', value ->> '$[19]', value ->> '$[20]',
  value ->> '$[21]', value ->> '$[22]', value ->> '$[23]', value ->> '$[24]', value ->> '$[25]', value ->> '$[26][0]', value ->> '$[26][1]',
  value ->> '$[26][2]', value ->> '$[26][3]', value ->> '$[26][4]'
FROM json_each(@Rows)
WHERE TRUE
  -- @include same_rows_as_then
ON CONFLICT (RecordID) DO NOTHING
RETURNING RecordID;
