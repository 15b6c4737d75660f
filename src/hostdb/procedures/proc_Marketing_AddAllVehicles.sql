-- Selects vehicles for a campaign, one row a vehicle with its customer: all, of certain makes, or with a due date between the two dates
-- (@Recall_ID 1 to 6). A customer query that is narrowed by mileage, year or model comes here too: then it is the vehicles of the lapsed,
-- recent, top or bottom customers.
-- The earlier rows of the campaign are deleted; the new ones come without send flags. Returned are the rows of the campaign, RecordID
-- first. @Turnover is accepted and changes nothing.
CREATE PROCEDURE proc_Marketing_AddAllVehicles
  -- @include selection_parameters
AS
DELETE FROM [Campaign Results] WHERE CampaignID = @CampaignID;

-- Vehicles, and vehicles of lapsed or recent customers.
WITH RECURSIVE
-- @include period
,
-- @include makes
-- @include result_columns
-- @include result_values
  v.Vehicle, v.Make, v.Model, v.Year, v.Last_Mileage, v.Recall_Date
-- @include vehicles_of_query
  -- @include vehicle_filters
  -- @include may_be_contacted
  -- @include customer_filters
ORDER BY v.Customer, v.VehicleID;

-- Vehicles of top or bottom customers: the ranking is made first, the filters narrow it.
WITH
-- @include period
,
-- @include ranking
-- @include result_columns
-- @include result_values
  v.Vehicle, v.Make, v.Model, v.Year, v.Last_Mileage, NULL
FROM Ranked r
CROSS JOIN Vehicles v ON v.Customer = r.Customer
CROSS JOIN Marketing_Customers c ON c.Customer = r.Customer
WHERE (@Top = 1 OR @Bottom = 1)
  -- @include vehicle_filters
  -- @include customer_filters
ORDER BY r.Position, r.Customer, v.VehicleID;

-- @include history

SELECT * FROM Campaign_Results_Grid WHERE CampaignID = @CampaignID ORDER BY RecordID;
