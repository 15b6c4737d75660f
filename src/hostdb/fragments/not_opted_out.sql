-- A condition on the customer c: no opting out, unless the call asks for those who did.
(@IncludeOptedOut = 1 OR ifnull(c.Consent_Response, 0) <> 2)
