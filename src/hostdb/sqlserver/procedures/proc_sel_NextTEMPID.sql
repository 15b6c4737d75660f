UPDATE _Keys SET Last_Value = Last_Value + Step
OUTPUT inserted.Last_Value AS ID
WHERE Key_Name = 'TEMP';
