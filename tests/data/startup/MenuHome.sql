-- The tables of the print menu's program folder as the program's database
-- declares them; the two courses are the codes the menu's buttons stand for.
CREATE TABLE tblIndex (IndexID INTEGER, MainDataCode INTEGER, DataType INTEGER,
    LinkCode INTEGER, FileName TEXT, ApplyerName TEXT, FYearNumber DOUBLE,
    FYearFrom DATETIME, FYearTo DATETIME, PrintFlag BOOLEAN DEFAULT 0);
CREATE TABLE tblService (ServiceID INTEGER, ServiceName TEXT, SortNumber INTEGER);
INSERT INTO tblService VALUES (1, 'レギュラー（10営業日以内）', 1);
INSERT INTO tblService VALUES (3, 'エクスプレス（3営業日以内）', 2);
CREATE TABLE tblPref (PrefID INTEGER, PrefName TEXT);
CREATE TABLE tblHantoku (HantokuID INTEGER, HantokuText TEXT);
