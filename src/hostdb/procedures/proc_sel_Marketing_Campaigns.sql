-- The saved campaigns by name, for lists. Last_Run is when its query ran or its letters or messages were last produced, NULL when never.
CREATE PROCEDURE proc_sel_Marketing_Campaigns
AS
SELECT ID, Campaign_Name, Last_Run, Created_Date, Campaign_Description, Created_By
FROM Marketing_Campaigns ORDER BY Campaign_Name, ID;
