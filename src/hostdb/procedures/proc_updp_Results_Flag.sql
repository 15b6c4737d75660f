-- Sets one send flag in some rows of a campaign: Send_SMS, Send_Email or Send_Letter. Any other column is an error.
-- @RecordIDs holds the keys of the rows, separated by commas.
CREATE PROCEDURE proc_updp_Results_Flag
  @CampaignID int,
  @RecordIDs nvarchar(max),
  @Column nvarchar(50),
  @Ticked bit
AS
SELECT RaiseError(50000, 'Column ''' || @Column || ''' is not a flag that can be set.')
WHERE @Column COLLATE NOCASE NOT IN ('Send_SMS', 'Send_Email', 'Send_Letter');
UPDATE [Campaign Results] SET
  Send_SMS = CASE WHEN @Column = 'Send_SMS' COLLATE NOCASE THEN @Ticked ELSE Send_SMS END,
  Send_Email = CASE WHEN @Column = 'Send_Email' COLLATE NOCASE THEN @Ticked ELSE Send_Email END,
  Send_Letter = CASE WHEN @Column = 'Send_Letter' COLLATE NOCASE THEN @Ticked ELSE Send_Letter END
WHERE RecordID IN (SELECT value FROM json_each('[' || @RecordIDs || ']')) AND CampaignID = @CampaignID;
