-- A condition on a row of [Campaign Results]: what the send journal is about to hold of its message may be noted.
-- "Sending" may be while the message is due, was not begun, and nothing is against it.
AND (@State <> 0
     OR (Processed = 0
         AND CASE @Channel WHEN 1 THEN Send_SMS WHEN 2 THEN Send_Email ELSE Send_Letter END = 1
         AND NOT EXISTS (SELECT 1 FROM Send_Journal j WHERE j.RecordID = @RecordID AND j.Channel = @Channel
                         AND (j.State = 1 OR (j.State = 0 AND @Channel <> 3)))
         AND EXISTS (SELECT 1 FROM Send_Refusals f
                     WHERE f.RecordID = @RecordID AND CASE @Channel WHEN 1 THEN f.SMS_Refusal WHEN 2 THEN f.Email_Refusal ELSE f.Letter_Refusal END = 0)))
