-- tblWork: the settings of the run, exactly one row. It is overwritten with an
-- UPDATE without condition at every start and never emptied, so the shipped
-- file must already hold its row.
CREATE TABLE tblWork (
    OldZaimuDataPath TEXT,     -- folder of old financial data files
    MainDataCode     INTEGER,  -- applicant key of the run
    ExcelDataFolder  TEXT,     -- folder of Excel workbooks
    NewZaimuDataPath TEXT,     -- folder of the sibling database Ledra.mdb
    NewZaimuProgram  TEXT      -- the sibling program, for its file version
);

INSERT INTO tblWork (OldZaimuDataPath, MainDataCode, ExcelDataFolder, NewZaimuDataPath, NewZaimuProgram)
VALUES ('', 0, '', '', '');
