-- The work done: invoices and the documents that lead to them.

-- Record_Type 0 is an invoice. Every other number is a document that has no effect here (1 estimate, 2 booking).
CREATE TABLE Services (
  RecordID integer PRIMARY KEY,
  Record_Type smallint NOT NULL DEFAULT 0,
  Invoice_Date datetime,
  Customer int,
  Vehicle nvarchar(20) COLLATE NOCASE,
  Total money NOT NULL DEFAULT 0
);
