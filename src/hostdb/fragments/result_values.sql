-- The values of a new row that come from the customer c. An unknown mobile number or e-mail address is empty, never
-- NULL.
SELECT @CampaignID, @UserID, (SELECT GetDate()), c.Customer, c.Title, c.Firstname, c.Lastname, c.Address, c.Telephone, c.Contact,
  ifnull(c.Mobile, ''), ifnull(c.Email, ''), c.Cust_Type, c.Enquiry_Source, c.Last_Invoiced, 1 - c.No_Marketing, c.Consent_Response, c.Can_Send_SMS,
  c.Can_Send_Email, c.Can_Send_Letter,
