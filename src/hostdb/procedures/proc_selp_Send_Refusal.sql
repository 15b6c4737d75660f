-- Why the text, the e-mail or the letter of one results row must not go any more: one row with the reasons (see the view Send_Refusals), or none when the
-- row is gone.
CREATE PROCEDURE proc_selp_Send_Refusal
  @RecordID int
AS
SELECT RecordID, SMS_Refusal, Email_Refusal, Letter_Refusal FROM Send_Refusals WHERE RecordID = @RecordID;
