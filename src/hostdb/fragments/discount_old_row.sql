-- In a trigger of [Campaign Results]: subtracts the old row from the counters.
UPDATE Campaign_Results_Counters SET
  ByLetter = ByLetter - old.Send_Letter,
  BySMS = BySMS - old.Send_SMS,
  BySMS_Processed = BySMS_Processed - old.Send_SMS * old.Processed,
  ByEmail = ByEmail - old.Send_Email,
  ByEmail_Processed = ByEmail_Processed - old.Send_Email * old.Processed
WHERE CampaignID = old.CampaignID;
