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
  -- @include may_be_noted
ON CONFLICT (RecordID, Channel) DO UPDATE SET
  State = excluded.State, CampaignID = excluded.CampaignID, UserID = excluded.UserID, Changed = excluded.Changed,
  Reason = excluded.Reason
RETURNING RecordID;
