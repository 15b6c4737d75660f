-- Deletes the entry of one message of a results row from the send journal. @Channel: 1 text message, 2 e-mail,
-- 3 letter.
CREATE PROCEDURE proc_delp_Send_Journal
  @RecordID int,
  @Channel smallint
AS
DELETE FROM Send_Journal WHERE RecordID = @RecordID AND Channel = @Channel;
