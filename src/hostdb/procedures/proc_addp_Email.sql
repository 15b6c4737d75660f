-- Records an e-mail that the mail server accepted.
CREATE PROCEDURE proc_addp_Email
  @AC_Ref nvarchar(15),
  @AC_Type smallint = 1,
  @Email_To nvarchar(80) = NULL,
  @Email_Subject nvarchar(60) = NULL,
  @Email_Text nvarchar(max) = NULL,
  @Attachments nvarchar(max) = ''
AS
INSERT INTO Emails (AC_Ref, AC_Type, Email_To, Email_Subject, Email_Text, Attachments, Created_Date)
VALUES (@AC_Ref, @AC_Type, @Email_To, @Email_Subject, @Email_Text, @Attachments, GetDate());
