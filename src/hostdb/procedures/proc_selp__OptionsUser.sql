-- Returns the options of one user, or no row when the user has none yet.
CREATE PROCEDURE proc_selp__OptionsUser
  @UserId nvarchar(50)
AS
SELECT * FROM _OptionsUser WHERE UserId = @UserId;
