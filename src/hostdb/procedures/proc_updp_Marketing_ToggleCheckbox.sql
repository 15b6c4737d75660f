-- Flips one flag of a results row: Send_SMS, Send_Email, Send_Letter or Processed; any other column is an error.
-- Ticking Processed settles what the send journal holds of the row's text and e-mail as sent; unticking clears it, so that the row is due whole again.
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
