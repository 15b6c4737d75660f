-- A condition on the customer c: the type. 0 is, 1 is not; an empty value means "none given".
CASE WHEN @UseCustType = 0 THEN 1
  WHEN @WhenCustType = 0 THEN ifnull(c.Cust_Type, '') = @ValueCustType COLLATE NOCASE
  WHEN @WhenCustType = 1 THEN ifnull(c.Cust_Type, '') <> @ValueCustType COLLATE NOCASE
  ELSE 1 END
