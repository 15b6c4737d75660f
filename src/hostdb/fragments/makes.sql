-- A table of a WITH clause: the makes of @Makes, which are separated by commas. The first row and rows with an empty
-- name stand for no make.
Chosen (Make, Rest) AS (
  SELECT '', ifnull(@Makes, '') || ','
  UNION ALL
  SELECT trim(substr(Rest, 1, instr(Rest, ',') - 1)), substr(Rest, instr(Rest, ',') + 1) FROM Chosen WHERE Rest <> ''
)
