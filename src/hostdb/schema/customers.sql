-- Customers and the lists they refer to.

CREATE TABLE Customer_Types (
  Customer_Type_ID integer PRIMARY KEY,
  Description nvarchar(50) NOT NULL COLLATE NOCASE
);

CREATE TABLE Enquiry_Sources (
  Enquiry_Source_ID integer PRIMARY KEY,
  Description nvarchar(50) NOT NULL COLLATE NOCASE
);

-- Customer is the key that the program shows and orders by. Address holds the lines above the postcode, separated by
-- CR. No_Marketing is the switch "No Marketing" of the customer card. Consent_Response: NULL or 0 not asked,
-- 1 consented, 2 opted out. Can_Send_SMS, Can_Send_Email and Can_Send_Letter: what the customer agreed to, NULL when
-- never asked.
CREATE TABLE Customers (
  Customer integer PRIMARY KEY,
  Title nvarchar(20) COLLATE NOCASE,
  Firstname nvarchar(100) COLLATE NOCASE,
  Lastname nvarchar(100) COLLATE NOCASE,
  Company nvarchar(100) COLLATE NOCASE,
  Contact nvarchar(100) COLLATE NOCASE,
  Address nvarchar(500) COLLATE NOCASE,
  Postcode nvarchar(10) COLLATE NOCASE,
  Telephone nvarchar(50) COLLATE NOCASE,
  Mobile nvarchar(50) COLLATE NOCASE,
  Email nvarchar(255) COLLATE NOCASE,
  Customer_Type_ID int,
  Enquiry_Source_ID int,
  No_Marketing bit NOT NULL DEFAULT 0,
  Consent_Response int,
  Can_Send_SMS bit,
  Can_Send_Email bit,
  Can_Send_Letter bit
);

-- A customer as a campaign row shows one. Address is what goes on an envelope below the name: the company, the address
-- lines, the postcode. Contact is the name for a greeting ("Mr Hartley"). It is the contact of the customer if there is
-- one, otherwise title and last name, otherwise first and last name.
CREATE VIEW Marketing_Customers AS
SELECT
  c.Customer,
  c.Title,
  c.Firstname,
  c.Lastname,
  CASE WHEN ltrim(rtrim(ifnull(c.Company, ''))) <> '' THEN ltrim(rtrim(c.Company)) || char(13) ELSE '' END
    || ifnull(c.Address, '')
    || CASE WHEN ltrim(rtrim(ifnull(c.Postcode, ''))) <> '' THEN char(13) || ltrim(rtrim(c.Postcode)) ELSE '' END AS Address,
  c.Telephone,
  CASE
    WHEN ltrim(rtrim(ifnull(c.Contact, ''))) <> '' THEN ltrim(rtrim(c.Contact))
    WHEN ltrim(rtrim(ifnull(c.Lastname, ''))) = '' THEN ltrim(rtrim(ifnull(c.Firstname, '')))
    WHEN ltrim(rtrim(ifnull(c.Title, ''))) <> '' THEN ltrim(rtrim(c.Title)) || ' ' || ltrim(rtrim(c.Lastname))
    ELSE ltrim(rtrim(ifnull(c.Firstname, '') || ' ' || ltrim(rtrim(c.Lastname))))
  END AS Contact,
  c.Mobile,
  c.Email,
  t.Description AS Cust_Type,
  s.Description AS Enquiry_Source,
  (SELECT max(i.Invoice_Date) FROM Services i WHERE i.Customer = c.Customer AND i.Record_Type = 0) AS Last_Invoiced,
  c.No_Marketing,
  c.Consent_Response,
  c.Can_Send_SMS,
  c.Can_Send_Email,
  c.Can_Send_Letter
FROM Customers c
LEFT JOIN Customer_Types t ON t.Customer_Type_ID = c.Customer_Type_ID
LEFT JOIN Enquiry_Sources s ON s.Enquiry_Source_ID = c.Enquiry_Source_ID;
