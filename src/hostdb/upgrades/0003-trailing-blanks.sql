-- Trailing blanks do not count in comparisons any more. Unique keys that differ in nothing else are one key now: the row that was made first
-- stays. Those tables are emptied and filled anew, since in an index of the old order no row could be found for sure.

CREATE TABLE Kept_Rows AS SELECT * FROM _Options NOT INDEXED;
DELETE FROM _Options;
INSERT OR IGNORE INTO _Options SELECT * FROM Kept_Rows ORDER BY rowid;
DROP TABLE Kept_Rows;

CREATE TABLE Kept_Rows AS SELECT * FROM _OptionsUser NOT INDEXED;
DELETE FROM _OptionsUser;
INSERT OR IGNORE INTO _OptionsUser SELECT * FROM Kept_Rows ORDER BY rowid;
DROP TABLE Kept_Rows;

CREATE TABLE Kept_Rows AS SELECT * FROM _Procedures NOT INDEXED;
DELETE FROM _Procedures;
INSERT OR IGNORE INTO _Procedures SELECT * FROM Kept_Rows ORDER BY rowid;
DROP TABLE Kept_Rows;

CREATE TABLE Kept_Rows AS SELECT * FROM _Keys NOT INDEXED;
DELETE FROM _Keys;
INSERT OR IGNORE INTO _Keys SELECT * FROM Kept_Rows ORDER BY rowid;
DROP TABLE Kept_Rows;

-- Every other index with text in it gets the new order.
REINDEX NOCASE;
