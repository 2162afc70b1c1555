-- Period 7 (Distinction 1) with items that take part by their code, a name
-- change or their amount, two rows of one code in their sort order, and an
-- item of another period. Columns: ID, FSDataCode, FSItemID, ItemCode,
-- ItemName, ItemValue, NameChangeFlag, DocCode, SortNumber.
INSERT INTO tmpFSInfoData (FSDataCode, FYearNumber, FYearFrom, FYearTo, Distinction, TaxType, SideBusinessFlag,
    TaxFreeFlag, EnforceDate, ApplyerName) VALUES (7, 12, '2007-04-01', '2008-03-31', 1, 1, 0, 1, '2006-07-01', 'テスト');
INSERT INTO tmpFSItemData (ID, FSDataCode, FSItemID, ItemCode, ItemName, ItemValue, NameChangeFlag, DocCode, SortNumber)
VALUES (0, 7, 0, 100, 'x', 1234567, 0, 1, 0),
       (0, 7, 0, 101, 'x', -1999, 0, 1, 0),
       (0, 7, 0, 102, 'x', -999, 0, 1, 0),
       (0, 7, 0, 103, 'x', 0, 0, 1, 0),
       (0, 7, 0, 104, 'x', 0, 1, 1, 0),
       (0, 7, 0, 159, 'x', 0, 0, 1, 0),
       (0, 7, 0, 160, 'x', 0, 0, 1, 0),
       (0, 7, 0, 162, 'x', 0, 0, 1, 0),
       (0, 7, 0, 204, 'x', NULL, 0, 1, 0),
       (0, 7, 0, 207, 'x', 0, 0, 1, 0),
       (0, 7, 0, 208, 'x', 999, 0, 1, 0),
       (1, 7, 1, 300, 'x', 5000, 0, 1, 2),
       (2, 7, 2, 300, 'x', 7000, 0, 1, 1),
       (0, 7, 0, 9999, 'x', 1000, 0, 1, 0),
       (0, 7, 0, 10000, 'x', 5000, 0, 1, 0),
       (0, 7, 0, 10001, 'x', 0, 1, 1, 0),
       (0, 8, 0, 105, 'x', 9000, 0, 1, 0);
