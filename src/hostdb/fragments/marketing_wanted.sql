-- A condition on the customer c: the switch "No Marketing" is off, or the call asks for customers who have it on.
(@IgnoreMarketingSwitch = 1 OR c.No_Marketing = 0)
