-- A condition on the customer c: the enquiry source. It is compared like the customer type.
CASE WHEN @UseEnquirySource = 0 THEN 1
  WHEN @WhenEnquirySource = 0 AND ifnull(c.Enquiry_Source, '') = @ValueEnquirySource COLLATE NOCASE THEN 1
  WHEN @WhenEnquirySource = 1 AND ifnull(c.Enquiry_Source, '') <> @ValueEnquirySource COLLATE NOCASE THEN 1
  WHEN @WhenEnquirySource IN (0, 1) THEN 0
  ELSE 1 END = 1
