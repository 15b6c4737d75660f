-- Selects the engines of boats for a campaign and adds one row for each engine, with its customer. Vehicle is the
-- registration of the boat, Last_Mileage the hours run. @Makes are makes of engines. Mileage (hours), year and model
-- are those of the engine and are compared as for vehicles.
-- The earlier rows of the campaign are deleted. The new rows have no send flags. Returns the rows of the campaign, with
-- RecordID as the first column.
-- @Turnover is accepted and has no effect. The parameters of customer and reminder queries have no effect here either.
CREATE PROCEDURE proc_Marketing_AddAllEngines
  -- @include selection_parameters
AS
DELETE FROM [Campaign Results] WHERE CampaignID = @CampaignID;

WITH RECURSIVE
-- @include makes
-- @include result_columns
-- @include result_values
  v.Vehicle, v.Make, v.Model, v.Year, v.Last_Mileage, NULL
-- @include engines_of_query
  -- @include vehicle_filters
  -- @include may_be_contacted
  -- @include customer_filters
ORDER BY v.Customer, v.EngineID;

-- @include history

SELECT * FROM Campaign_Results_Grid WHERE CampaignID = @CampaignID ORDER BY RecordID;
