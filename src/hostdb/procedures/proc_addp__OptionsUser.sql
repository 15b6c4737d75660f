-- Gives a user the default options. A user who has options keeps them.
CREATE PROCEDURE proc_addp__OptionsUser
  @UserId nvarchar(50)
AS
INSERT INTO _OptionsUser (UserId) VALUES (@UserId) ON CONFLICT DO NOTHING;
