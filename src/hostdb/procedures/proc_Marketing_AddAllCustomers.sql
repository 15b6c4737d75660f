-- Selects customers for a campaign and adds one row for each customer. It selects all customers, lapsed ones (an
-- invoice before the period and none in it), recent ones (an invoice in the period), or the top or bottom spenders. The
-- period reaches from @FromDate to @ToDate.
-- The top or bottom spenders are @Criteria customers, from place @CriteriaStart on. They are ordered by the sum of
-- their invoices in the period, and by their key when the sums are equal.
-- The earlier rows of the campaign are deleted. The new rows have no send flags. Returns the rows of the campaign, with
-- RecordID as the first column.
-- @Turnover is accepted and has no effect. The parameters of vehicles have no effect here either.
CREATE PROCEDURE proc_Marketing_AddAllCustomers
  -- @include selection_parameters
AS
DELETE FROM [Campaign Results] WHERE CampaignID = @CampaignID;

-- All, lapsed or recent customers.
WITH
-- @include period
-- @include result_columns
-- @include result_values
  NULL, NULL, NULL, NULL, NULL, NULL
-- @include customers_of_query
  -- @include may_be_contacted
  -- @include customer_filters
ORDER BY c.Customer;

-- Top or bottom spenders. The ranking is made first. The filters then leave out some of its customers.
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
