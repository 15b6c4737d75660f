-- Notes that letters went out. @Rows holds the keys of their rows, as in "4711,4712". Returns the keys of the rows that
-- the campaign still has.
CREATE PROCEDURE proc_updp_Letters_Sent
  @CampaignID int,
  @Rows nvarchar(max),
  @UserID nvarchar(50)
AS
INSERT INTO Send_Journal (RecordID, Channel, State, CampaignID, UserID, Changed)
SELECT RecordID, 3, 1, CampaignID, @UserID, GetDate()
FROM [Campaign Results] WHERE CampaignID = @CampaignID AND RecordID IN (SELECT value FROM json_each('[' || @Rows || ']'))
ON CONFLICT (RecordID, Channel) DO UPDATE SET
  State = excluded.State, CampaignID = excluded.CampaignID, UserID = excluded.UserID, Changed = excluded.Changed, Reason = NULL
RETURNING RecordID;
