-- A condition on the customer c: no switch "No Marketing", unless the call asks for those who have it.
(@IgnoreMarketingSwitch = 1 OR c.No_Marketing = 0)
