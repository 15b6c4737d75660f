-- These indexes replace those of schema/indexes.sql. They have no condition, because an index with a condition would
-- keep out programs that connect with older settings.
CREATE INDEX Services_Invoices ON Services (Customer, Record_Type, Invoice_Date) INCLUDE (Total);
CREATE INDEX Vehicles_Customer ON Vehicles (Customer);
