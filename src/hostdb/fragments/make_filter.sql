-- Condition on the vehicle or engine v: its make is one of the chosen, exact but for case; NULL: any make.
AND CASE WHEN @Makes IS NULL OR v.Make IN (SELECT Make FROM Chosen WHERE Make <> '') THEN 1 ELSE 0 END = 1
