-- Conditions on the customer c: type and enquiry source. 0 is, 1 is not; an empty value means "none given".
AND CASE WHEN @UseCustType = 0 THEN 1
  WHEN @WhenCustType = 0 THEN ifnull(c.Cust_Type, '') = @ValueCustType COLLATE NOCASE
  WHEN @WhenCustType = 1 THEN ifnull(c.Cust_Type, '') <> @ValueCustType COLLATE NOCASE
  ELSE 1 END
AND CASE WHEN @UseEnquirySource = 0 THEN 1
  WHEN @WhenEnquirySource = 0 THEN ifnull(c.Enquiry_Source, '') = @ValueEnquirySource COLLATE NOCASE
  WHEN @WhenEnquirySource = 1 THEN ifnull(c.Enquiry_Source, '') <> @ValueEnquirySource COLLATE NOCASE
  ELSE 1 END
