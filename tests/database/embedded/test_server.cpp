// The schema of the test database.

#include "test_server.h"

namespace qbx {

const char* TestServer::Schema() {
  return R"sql(
BEGIN;
CREATE TABLE Customer_Types(Type_ID integer primary key, Description nvarchar(40) COLLATE NOCASE NOT NULL);
CREATE TABLE Customers(Customer nvarchar(10) COLLATE NOCASE PRIMARY KEY, Lastname nvarchar(40) COLLATE NOCASE, Type_ID int,
  Balance money, Active bit, Since datetime, Rating float CONSTRAINT CK_Rating CHECK (Rating < 1), Discount decimal(5,2));
CREATE TABLE [Campaign Results](RecordID integer primary key autoincrement, CampaignID int, Customer nvarchar(10) COLLATE NOCASE,
  Mobile nvarchar(30) COLLATE NOCASE, Email nvarchar(80) COLLATE NOCASE, Send_SMS bit DEFAULT 0, Can_Send_SMS bit);
INSERT INTO Customer_Types VALUES (1, 'Retail'), (2, 'Trade');
INSERT INTO Customers VALUES ('C1', 'Öztürk', 1, 12.5, 1, '2024-02-29 08:30:00', 0.25, 7.25), ('C2', 'adams', 2, -3, 0, '2023-12-31', NULL, 0),
  ('C3', NULL, NULL, NULL, NULL, NULL, NULL, NULL);
INSERT INTO [Campaign Results](CampaignID, Customer, Mobile, Email, Can_Send_SMS) VALUES (12, 'C1', '07700900001', 'a@b.example', 1),
  (12, 'C2', '123', '', NULL), (13, 'C3', '', '@b', 0);
CREATE TABLE _Keys(Name text primary key, Next int);
INSERT INTO _Keys VALUES ('TEMP', 0);
CREATE TABLE _Procedures(Name text primary key COLLATE NOCASE, Header text, Body text, Version int);
INSERT INTO _Procedures VALUES
 ('proc_sel_NextTEMPID', '-- The next temporary number.
CREATE PROCEDURE proc_sel_NextTEMPID
AS', 'UPDATE _Keys SET Next = Next - 1 WHERE Name = ''TEMP'' RETURNING Next;', 1),
 ('proc_add', 'CREATE PROCEDURE proc_add @Customer nvarchar(5), @Type smallint = 1, @Since datetime = NULL, @Active bit = 0,
  @Balance money = 1.5',
  'INSERT INTO Customers(Customer, Type_ID, Since, Active, Balance) VALUES (@Customer, @type, @Since, @Active, @Balance);
   SELECT Customer, Type_ID, Since, Active, Balance FROM Customers WHERE Customer = @Customer; DELETE FROM _Keys WHERE Name = ''none'';', 1),
 ('proc_two', 'CREATE PROCEDURE proc_two @N int AS', 'INSERT INTO _Keys VALUES (''two'', @N); INSERT INTO Customers(Customer) VALUES (''C1'');', 1),
 ('proc_raise', 'CREATE PROCEDURE proc_raise', 'SELECT RaiseError(50001, ''Not ''''today''''.'') WHERE 1 = 1', 1),
 ('proc_slow', 'CREATE PROCEDURE proc_slow', 'WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n) SELECT count(*) FROM n', 1),
 ('proc_list', 'CREATE PROCEDURE proc_list @n int = 0', 'SELECT Customer FROM Customers ORDER BY Customer LIMIT CASE @n WHEN 0 THEN -1 ELSE @n END', 1);
COMMIT;
)sql";
}

}  // namespace qbx
