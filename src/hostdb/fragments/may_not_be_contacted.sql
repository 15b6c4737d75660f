-- A condition on the customer c: the customer is not selected, whatever the filters are.
NOT (1 = 1
  -- @include may_be_contacted
  )
