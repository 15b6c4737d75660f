-- Records a text message that was handed to the gateway. @MessageID is the number that the gateway gave it, or 0 when
-- the gateway refused it.
CREATE PROCEDURE proc_addp_SMS
  @Customer nvarchar(50),
  @Mobile_Number nvarchar(50),
  @Message nvarchar(max),
  @Status smallint = 0,
  @MessageID int = 0,
  @UserID nvarchar(50) = NULL
AS
INSERT INTO SMS (Customer, Mobile_Number, Message, Status, MessageID, UserID, Created_Date)
VALUES (@Customer, @Mobile_Number, @Message, @Status, @MessageID, @UserID, GetDate());
