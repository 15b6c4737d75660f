-- Returns the options of one company: its row with every option key as a column, or no row when the company has none.
CREATE PROCEDURE proc_selp__Option
  @Company nvarchar(10)
AS
SELECT * FROM _Options WHERE Options_Company = @Company;
