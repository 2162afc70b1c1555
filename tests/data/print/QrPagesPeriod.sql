-- The application, and period 0 of the run: index row 7, the 40th business
-- year of a corporation.
INSERT INTO tmpAPData (APDataCode, ApplierColumnName, ContactPosition, ContactName, ContactTel, ContactFax,
  PrefCode1, ClasCtgr1, LcnsNum1A, LcnsNum1B) VALUES (1, '株式会社ケルバリー建設', '総務部', '鈴木　花子',
  '03-1234-5678', '03-1234-5679', 13, 1, '20', '012345');
INSERT INTO tblIndex (IndexID, MainDataCode, DataType, LinkCode, ApplyerName, FYearNumber, FYearFrom, FYearTo,
  PrintFlag) VALUES (7, 1001, 0, 3, '株式会社ケルバリー建設', 40, '2008-04-01', '2009-03-31', 1);
INSERT INTO tmpFSInfoData (FSDataCode, FYearNumber, EnforceDate) VALUES (7, 40, '2006-07-01');
