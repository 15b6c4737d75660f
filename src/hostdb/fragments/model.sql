-- A condition on the vehicle or engine v: its model contains the text, without regard to case.
CASE WHEN @FilterModel = 0 THEN 1 ELSE CharIndex(trim(@ValueModel), v.Model) > 0 END
