-- What a change of a results row can alter and what taking it back restores, in one text that Fields_Of splits: the key
-- of the row, its flags, when it was processed, and the entries of its three channels in the send journal. Two states
-- of a row are the same when their texts are the same.
CREATE VIEW Campaign_Results_States AS
SELECT r.RecordID, r.CampaignID,
  CAST('{' AS nvarchar(max)) + CAST(r.RecordID AS nvarchar(11)) + '|' + CAST(r.Send_SMS AS nvarchar(1)) + '|' + CAST(r.Send_Email AS nvarchar(1)) + '|'
    + CAST(r.Send_Letter AS nvarchar(1)) + '|' + CAST(r.Processed AS nvarchar(1)) + '|' + isnull(CONVERT(nvarchar(23), r.Processed_Date, 121) + '|', '~n|')
    + isnull((SELECT CAST(j.State AS nvarchar(1)) + '|' + dbo.Packed(j.UserID) + CONVERT(nvarchar(23), j.Changed, 121) + '|' + dbo.Packed(j.Reason)
              FROM Send_Journal j WHERE j.RecordID = r.RecordID AND j.Channel = 1), '~n|~n|~n|~n|')
    + isnull((SELECT CAST(j.State AS nvarchar(1)) + '|' + dbo.Packed(j.UserID) + CONVERT(nvarchar(23), j.Changed, 121) + '|' + dbo.Packed(j.Reason)
              FROM Send_Journal j WHERE j.RecordID = r.RecordID AND j.Channel = 2), '~n|~n|~n|~n|')
    + isnull((SELECT CAST(j.State AS nvarchar(1)) + '|' + dbo.Packed(j.UserID) + CONVERT(nvarchar(23), j.Changed, 121) + '|' + dbo.Packed(j.Reason)
              FROM Send_Journal j WHERE j.RecordID = r.RecordID AND j.Channel = 3), '~n|~n|~n|~n|')
    + '}' AS State
FROM [Campaign Results] r;
