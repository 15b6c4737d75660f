-- Vehicles (boats in the boat edition), their makes, and the engines of boats.

-- Kind: 0 makes of vehicles, 5 makes of engines.
CREATE TABLE Makes (
  RecordID integer PRIMARY KEY,
  Description nvarchar(50) NOT NULL COLLATE NOCASE,
  Kind smallint NOT NULL DEFAULT 0
);

-- Vehicle is the registration. Recall_Date1 is the MOT and Recall_Date2 the service. Recall_Date3 to Recall_Date6 are
-- the reminders that the options name.
CREATE TABLE Vehicles (
  VehicleID integer PRIMARY KEY,
  Vehicle nvarchar(20) NOT NULL COLLATE NOCASE,
  Customer int,
  Make nvarchar(50) COLLATE NOCASE,
  Model nvarchar(100) COLLATE NOCASE,
  Year int,
  Last_Mileage int,
  Recall_Date1 date,
  Recall_Date2 date,
  Recall_Date3 date,
  Recall_Date4 date,
  Recall_Date5 date,
  Recall_Date6 date
);

-- Vehicle is the registration of the boat, Last_Mileage the hours run.
CREATE TABLE Engines (
  EngineID integer PRIMARY KEY,
  Vehicle nvarchar(20) NOT NULL COLLATE NOCASE,
  Customer int,
  Make nvarchar(50) COLLATE NOCASE,
  Model nvarchar(100) COLLATE NOCASE,
  Year int,
  Last_Mileage int
);
