-- Selects vehicles for a campaign and adds one row for each vehicle, with its customer. It selects all vehicles, those
-- of certain makes, or those with a due date in the period from @FromDate to @ToDate (@Recall_ID 1 to 6). A customer
-- query that is narrowed by mileage, year or model uses this procedure, too. It then selects the vehicles of the
-- lapsed, recent, top or bottom customers.
-- The earlier rows of the campaign are deleted. The new rows have no send flags. Returns the rows of the campaign, with
-- RecordID as the first column.
-- @Turnover is accepted and has no effect.
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

-- Vehicles of top or bottom spenders. The ranking is made first. The filters then leave out some of its vehicles.
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
