-- The rows are locked first. Their states, which the caller compares with earlier ones, then stay the same until the
-- transaction of the caller ends. Without a transaction the rows are locked for the first statement only.
-- @include held_rows
SELECT r.RecordID, r.Send_SMS, r.Send_Email, r.Send_Letter, r.Mobile, r.Email, r.Address, f.SMS_Refusal, f.Email_Refusal, f.Letter_Refusal, s.State
FROM @Held h
JOIN [Campaign Results] r ON r.RecordID = h.RecordID
JOIN Campaign_Results_States s ON s.RecordID = r.RecordID
JOIN Send_Refusals f ON f.RecordID = r.RecordID;
