-- A table of a WITH clause: the makes of @Makes, which are separated by commas.
Chosen (Make) AS (
  SELECT ltrim(rtrim(Value)) FROM dbo.Items_Of(@Makes)
)
