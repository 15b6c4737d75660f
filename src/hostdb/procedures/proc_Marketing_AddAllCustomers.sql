-- Selects customers for a campaign, one row a customer: all, lapsed (an invoice before the two dates and none between them), recent (an
-- invoice between them), or the top or bottom spenders (@Criteria customers from place @CriteriaStart on, by what was invoiced between the
-- dates; ties by customer key).
-- The earlier rows of the campaign are deleted; the new ones come without send flags. Returned are the rows of the campaign, RecordID
-- first. @Turnover is accepted and changes nothing, and so do here the parameters of vehicles.
CREATE PROCEDURE proc_Marketing_AddAllCustomers
  -- @include selection_parameters
AS
DELETE FROM [Campaign Results] WHERE CampaignID = @CampaignID;

-- All, lapsed, recent.
WITH
-- @include period
-- @include result_columns
-- @include result_values
  NULL, NULL, NULL, NULL, NULL, NULL
-- @include customers_of_query
  -- @include may_be_contacted
  -- @include customer_filters
ORDER BY c.Customer;

-- Top, bottom: the ranking is made first, the filters narrow it.
WITH
-- @include period
,
-- @include ranking
-- @include result_columns
-- @include result_values
  NULL, NULL, NULL, NULL, NULL, NULL
FROM Ranked r
CROSS JOIN Marketing_Customers c ON c.Customer = r.Customer
WHERE (@Top = 1 OR @Bottom = 1)
  -- @include customer_filters
ORDER BY r.Position, r.Customer;

-- @include history

SELECT * FROM Campaign_Results_Grid WHERE CampaignID = @CampaignID ORDER BY RecordID;
