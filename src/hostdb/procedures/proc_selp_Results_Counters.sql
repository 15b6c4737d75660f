-- Returns the counters of a campaign, always in one row: the numbers of rows that ask for a letter, a text message and
-- an e-mail, and how many of the rows for a text message and for an e-mail are processed. The counters are stored. The
-- rows are never counted.
CREATE PROCEDURE proc_selp_Results_Counters
  @CampaignID int
AS
SELECT ifnull(max(ByLetter), 0) AS ByLetter, ifnull(max(BySMS), 0) AS BySMS, ifnull(max(BySMS_Processed), 0) AS BySMS_Processed,
  ifnull(max(ByEmail), 0) AS ByEmail, ifnull(max(ByEmail_Processed), 0) AS ByEmail_Processed
FROM Campaign_Results_Counters WHERE CampaignID = @CampaignID;
