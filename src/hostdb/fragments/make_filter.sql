-- Condition on the vehicle or engine v: its make is one of the chosen, exact but for case; NULL: any make.
AND CASE WHEN @Makes IS NULL THEN 1 ELSE v.Make IN (SELECT Make FROM Chosen WHERE Make <> '') END
