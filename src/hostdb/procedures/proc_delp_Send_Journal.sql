-- Clears what the send journal holds of a message of a results row: @Channel 1 text, 2 e-mail, 3 letter.
CREATE PROCEDURE proc_delp_Send_Journal
  @RecordID int,
  @Channel smallint
AS
DELETE FROM Send_Journal WHERE RecordID = @RecordID AND Channel = @Channel;
