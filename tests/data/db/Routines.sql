-- A working database for the data access routines: the index, the one
-- settings row (MainDataCode 5) and the links to the sibling database.
CREATE TABLE tblIndex (IndexID INTEGER, ApplyerName TEXT, FYearNumber DOUBLE, FYearFrom DATETIME,
  PrintFlag BOOLEAN DEFAULT 0);
CREATE TABLE tblWork (OldZaimuDataPath TEXT, MainDataCode INTEGER, ExcelDataFolder TEXT);
INSERT INTO tblWork VALUES ('old', 5, NULL);
CREATE TABLE tblLinkTable (TableName TEXT, DataSource TEXT);
INSERT INTO tblLinkTable VALUES ('T_FS', 'Ledra_dummy.mdb');
INSERT INTO tblLinkTable VALUES ('T_MainData', 'Ledra_dummy.mdb');
