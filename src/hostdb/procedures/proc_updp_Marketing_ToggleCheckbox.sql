-- Changes one flag of a results row to its opposite: Send_SMS, Send_Email, Send_Letter or Processed. Any other column
-- is an error.
-- Ticking Processed sets the entries of the text message and the e-mail of the row in the send journal to sent.
-- Unticking it deletes all entries of the row, so that the whole row is due again.
CREATE PROCEDURE proc_updp_Marketing_ToggleCheckbox
  @RecordID int,
  @Column nvarchar(50)
AS
SELECT RaiseError(50000, 'Column ''' || @Column || ''' is not a flag that can be changed.')
WHERE @Column COLLATE NOCASE NOT IN ('Send_SMS', 'Send_Email', 'Send_Letter', 'Processed');
UPDATE [Campaign Results] SET Send_SMS = 1 - Send_SMS WHERE RecordID = @RecordID AND @Column = 'Send_SMS' COLLATE NOCASE;
UPDATE [Campaign Results] SET Send_Email = 1 - Send_Email WHERE RecordID = @RecordID AND @Column = 'Send_Email' COLLATE NOCASE;
UPDATE [Campaign Results] SET Send_Letter = 1 - Send_Letter WHERE RecordID = @RecordID AND @Column = 'Send_Letter' COLLATE NOCASE;
UPDATE [Campaign Results] SET Processed = 1 - Processed WHERE RecordID = @RecordID AND @Column = 'Processed' COLLATE NOCASE;
UPDATE Send_Journal SET State = 1, Changed = GetDate()
WHERE RecordID = @RecordID AND Channel IN (1, 2) AND @Column = 'Processed' COLLATE NOCASE
  AND EXISTS (SELECT 1 FROM [Campaign Results] WHERE RecordID = @RecordID AND Processed = 1);
DELETE FROM Send_Journal
WHERE RecordID = @RecordID AND @Column = 'Processed' COLLATE NOCASE
  AND EXISTS (SELECT 1 FROM [Campaign Results] WHERE RecordID = @RecordID AND Processed = 0);
