-- A condition on the customer c: the customer type. @WhenCustType: 0 is, 1 is not. An empty value means "none given".
CASE WHEN @UseCustType = 0 THEN 1
  WHEN @WhenCustType = 0 AND ifnull(c.Cust_Type, '') = @ValueCustType COLLATE NOCASE THEN 1
  WHEN @WhenCustType = 1 AND ifnull(c.Cust_Type, '') <> @ValueCustType COLLATE NOCASE THEN 1
  WHEN @WhenCustType IN (0, 1) THEN 0
  ELSE 1 END = 1
