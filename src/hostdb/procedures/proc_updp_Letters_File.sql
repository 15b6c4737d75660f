-- Notes that letters at "sending" are about to go to @File, a file or a printer ("printer:Office"). NULL notes that
-- they are not. @Rows holds the keys of their rows, as in "4711,4712".
CREATE PROCEDURE proc_updp_Letters_File
  @CampaignID int,
  @Rows nvarchar(max),
  @File nvarchar(255) = NULL
AS
UPDATE Send_Journal SET Reason = @File, Changed = GetDate()
WHERE CampaignID = @CampaignID AND Channel = 3 AND State = 0 AND RecordID IN (SELECT value FROM json_each('[' || @Rows || ']'));
