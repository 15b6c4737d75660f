-- In a trigger of [Campaign Results]: adds the new row to the counters.
INSERT INTO Campaign_Results_Counters
VALUES (new.CampaignID, new.Send_Letter, new.Send_SMS, new.Send_SMS * new.Processed, new.Send_Email, new.Send_Email * new.Processed)
ON CONFLICT (CampaignID) DO UPDATE SET
  ByLetter = ByLetter + excluded.ByLetter,
  BySMS = BySMS + excluded.BySMS,
  BySMS_Processed = BySMS_Processed + excluded.BySMS_Processed,
  ByEmail = ByEmail + excluded.ByEmail,
  ByEmail_Processed = ByEmail_Processed + excluded.ByEmail_Processed;
