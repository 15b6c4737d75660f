-- A condition on the customer c: the enquiry source, as the type.
CASE WHEN @UseEnquirySource = 0 THEN 1
  WHEN @WhenEnquirySource = 0 THEN ifnull(c.Enquiry_Source, '') = @ValueEnquirySource COLLATE NOCASE
  WHEN @WhenEnquirySource = 1 THEN ifnull(c.Enquiry_Source, '') <> @ValueEnquirySource COLLATE NOCASE
  ELSE 1 END
