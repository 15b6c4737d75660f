-- Indexes of the tables that a garage fills by the hundred thousand. They are made last, after the content.

-- All that the choice of lapsed, recent, top and bottom customers reads.
CREATE INDEX Services_Invoices ON Services (Customer, Invoice_Date, Total) WHERE Record_Type = 0;
CREATE INDEX Vehicles_Customer ON Vehicles (Customer);
