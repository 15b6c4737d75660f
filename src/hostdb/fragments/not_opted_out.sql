-- A condition on the customer c: the customer has not opted out, or the call asks for customers who did.
(@IncludeOptedOut = 1 OR ifnull(c.Consent_Response, 0) <> 2)
