-- The columns of a new row: first those of result_values, then those of the vehicle, whose values each selection gives
-- itself. A new row has no send flags.
INSERT INTO [Campaign Results]
  (CampaignID, UserID, Created_Date, Customer, Title, Firstname, Lastname, Address, Telephone, Contact, Mobile, Email,
  Cust_Type, Enquiry_Source, Last_Invoiced, Marketing, Consent_Response, Can_Send_SMS, Can_Send_Email, Can_Send_Letter,
  Vehicle, Make, Model, Year, Last_Mileage, Recall_Date)
