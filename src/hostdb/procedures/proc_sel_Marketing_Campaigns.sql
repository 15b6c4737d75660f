-- Returns the saved campaigns for lists, ordered by name. Last_Run is when the query of the campaign last ran or its
-- letters or messages were last produced. It is NULL when neither happened.
CREATE PROCEDURE proc_sel_Marketing_Campaigns
AS
SELECT ID, Campaign_Name, Last_Run, Created_Date, Campaign_Description, Created_By
FROM Marketing_Campaigns ORDER BY Campaign_Name, ID;
