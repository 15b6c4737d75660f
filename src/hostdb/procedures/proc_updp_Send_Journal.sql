-- Notes how far a message of a results row is. @Channel: 1 text message, 2 e-mail, 3 letter. @State: 0 sending, 1 sent,
-- 2 failed. @Reason says why the message failed. Returns the key of the row.
-- Returns no row when the campaign does not have the row (any more). For "sending" it also returns no row when the row
-- was processed, its flag was removed or the message was begun meanwhile, at another desk or by another run. The same
-- holds when the customer's answer is stricter now than when the row was selected (see the view Send_Refusals). Without
-- a row the message must not go out. A letter that was made, but neither printed nor saved, may be made again.
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
