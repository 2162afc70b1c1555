-- Period 21: 41 items (two ZaimuData symbols), item 7 renamed, one note and
-- one equity row, so that every count of the header differs from its
-- neighbour's default. Its edition code would stand for 2010-04-01 in the
-- current edition.
INSERT INTO tmpFSInfoData (FSDataCode, FYearNumber, FYearFrom, FYearTo, ApplyerName, Distinction, TaxType,
  TaxFreeFlag, SideBusinessFlag, EnforceDate, EnforceDatesub, VersionNumber, NoteTrustDebt)
  VALUES (21, 8, '2006-04-01', '2007-03-31', '南建設株式会社', 1, 2, 0, 1, '2006-07-01', '201004', '2.0', 25999);
WITH RECURSIVE n(c) AS (SELECT 1 UNION ALL SELECT c + 1 FROM n WHERE c < 41)
  INSERT INTO tmpFSItemData (ID, FSDataCode, FSItemID, ItemCode, ItemName, ItemValue, NameChangeFlag, DocCode,
  SortNumber) SELECT c, 21, c, c, 'x', c * 1000, c = 7, 1, c FROM n;
UPDATE tmpFSItemData SET ItemName = '工事未払金(下請)' WHERE ItemCode = 7;
INSERT INTO tmpFSNoteData (FSDataCode, AccountWayConsumptionTax) VALUES (21, '税抜方式');
INSERT INTO tmpFSCapitalRow (FSDataCode, RowNo, RowName, ItemCode, ItemType, Capital)
  VALUES (21, 1, '前期末残高', 4001, 1, 10000000);
