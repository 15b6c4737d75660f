-- Conditions on the customer c. Left out are customers with the switch "No Marketing" (unless @IgnoreMarketingSwitch) and those who opted
-- out (unless @IncludeOptedOut).
AND (c.No_Marketing = 0 OR @IgnoreMarketingSwitch = 1)
AND (@IncludeOptedOut = 1 OR ifnull(c.Consent_Response, 0) <> 2)
