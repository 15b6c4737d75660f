-- In a trigger of [Campaign Results]: the counters lose what the old row stood for.
UPDATE Campaign_Results_Counters SET
  ByLetter = ByLetter - old.Send_Letter,
  BySMS = BySMS - old.Send_SMS,
  BySMS_Processed = BySMS_Processed - old.Send_SMS * old.Processed,
  ByEmail = ByEmail - old.Send_Email,
  ByEmail_Processed = ByEmail_Processed - old.Send_Email * old.Processed
WHERE CampaignID = old.CampaignID;
