-- A condition on the vehicle or engine v: its model contains the text, without regard to case.
CASE WHEN @FilterModel = 0 OR CharIndex(ltrim(rtrim(@ValueModel)), v.Model) > 0 THEN 1 ELSE 0 END = 1
