-- A condition on the vehicle or engine v: its make is one of the chosen makes. The whole name is compared, without
-- regard to case. With @Makes NULL every make is chosen.
AND CASE WHEN @Makes IS NULL OR v.Make IN (SELECT Make FROM Chosen WHERE Make <> '') THEN 1 ELSE 0 END = 1
