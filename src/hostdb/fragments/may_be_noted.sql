-- A condition on a row of [Campaign Results]: @State may be noted for its message in the send journal. "Sending" may be
-- noted while the message is due, was not begun before and has no refusal. A letter that was begun and not sent may be
-- begun again.
AND (@State <> 0
     OR (Processed = 0
         AND CASE @Channel WHEN 1 THEN Send_SMS WHEN 2 THEN Send_Email ELSE Send_Letter END = 1
         AND NOT EXISTS (SELECT 1 FROM Send_Journal j WHERE j.RecordID = @RecordID AND j.Channel = @Channel
                         AND (j.State = 1 OR (j.State = 0 AND @Channel <> 3)))
         AND EXISTS (SELECT 1 FROM Send_Refusals f
                     WHERE f.RecordID = @RecordID AND CASE @Channel WHEN 1 THEN f.SMS_Refusal WHEN 2 THEN f.Email_Refusal ELSE f.Letter_Refusal END = 0)))
