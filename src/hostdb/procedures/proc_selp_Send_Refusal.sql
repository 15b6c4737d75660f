-- Returns why the text message, the e-mail or the letter of one results row must no longer go: one row with the reasons
-- (see the view Send_Refusals), or no row when the results row is gone.
CREATE PROCEDURE proc_selp_Send_Refusal
  @RecordID int
AS
SELECT RecordID, SMS_Refusal, Email_Refusal, Letter_Refusal FROM Send_Refusals WHERE RecordID = @RecordID;
