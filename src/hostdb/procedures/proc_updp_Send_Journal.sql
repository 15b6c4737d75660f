-- Notes how far a message of a results row is: @Channel 1 text, 2 e-mail, 3 letter; @State 0 sending, 1 sent, 2 failed, for the @Reason. Returns the key of the row.
-- No row comes back when the campaign does not hold that row (any more). For "sending" none comes back either when the row was processed, its
-- flag was taken away or the message was begun meanwhile (at another desk, by another run), and when the customer's answer is stricter now than
-- the one the row was selected with: then the message must not go out. A letter that was made and neither printed nor saved may be made again.
CREATE PROCEDURE proc_updp_Send_Journal
  @RecordID int,
  @CampaignID int,
  @Channel smallint,
  @State smallint,
  @UserID nvarchar(50),
  @Reason nvarchar(255) = NULL
AS
INSERT INTO Send_Journal (RecordID, Channel, State, CampaignID, UserID, Changed, Reason)
SELECT RecordID, @Channel, @State, CampaignID, @UserID, GetDate(), @Reason
FROM [Campaign Results] WHERE RecordID = @RecordID AND CampaignID = @CampaignID
  AND (@State <> 0
       OR (Processed = 0
           AND CASE @Channel WHEN 1 THEN Send_SMS WHEN 2 THEN Send_Email ELSE Send_Letter END = 1
           AND NOT EXISTS (SELECT 1 FROM Send_Journal j WHERE j.RecordID = @RecordID AND j.Channel = @Channel
                           AND (j.State = 1 OR (j.State = 0 AND @Channel <> 3)))
           AND EXISTS (SELECT 1 FROM Send_Refusals f
                       WHERE f.RecordID = @RecordID AND CASE @Channel WHEN 1 THEN f.SMS_Refusal WHEN 2 THEN f.Email_Refusal ELSE f.Letter_Refusal END = 0)))
ON CONFLICT (RecordID, Channel) DO UPDATE SET
  State = excluded.State, CampaignID = excluded.CampaignID, UserID = excluded.UserID, Changed = excluded.Changed,
  Reason = excluded.Reason
RETURNING RecordID;
