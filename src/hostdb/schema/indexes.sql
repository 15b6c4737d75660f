-- Indexes of tables in which a garage has hundreds of thousands of rows. They are made last, after the rows.

-- This index has all columns that the selection of lapsed, recent, top and bottom customers reads.
CREATE INDEX Services_Invoices ON Services (Customer, Invoice_Date, Total) WHERE Record_Type = 0;
CREATE INDEX Vehicles_Customer ON Vehicles (Customer);
