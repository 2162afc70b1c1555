-- A corporation's period 3 in the sibling database, with the columns and
-- reserve names that head the sheet.
INSERT INTO T_FS (FSDataCode, MainDataCode, FYearNumber, FYearFrom, FYearTo, ApplyerName, Distinction, CapitalSubFlag) VALUES (3, 1, 40, '2008-04-01', '2009-03-31', '株式会社ケルバリー建設', 1, 1);
INSERT INTO T_FSCapitalCol (FSDataCode, ColNo, ColName, ItemCode) VALUES (3, 6, '利益準備金列', 650), (3, 8, '繰越利益剰余金', 690), (3, 9, '利益剰余金合計', 700), (3, 1, '資本金', 600), (4, 2, '他期', 690);
INSERT INTO M_FSItemDetail (ID, FSItemID, ItemDetailName) VALUES (234, 89, '任意積立金'), (763, 89, '新築積立金'), (235, 90, '配当平均積立金'), (999, 89, '置き場のない積立金');
INSERT INTO T_FSItemDetail (FSDataCode, FSItemID, FSItemDetailID, DataText) VALUES (3, 89, 763, '圧縮積立金'), (4, 90, 235, '他期の名前');
