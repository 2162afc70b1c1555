-- Period 5's equity statement: two columns (one with a comma in its name and
-- no item code), a first row with every amount column filled and quotes and
-- a comma in its name, and ten more rows r2 … r11.
INSERT INTO tmpFSInfoData (FSDataCode, FYearNumber, FYearFrom, FYearTo, Distinction, TaxType, SideBusinessFlag,
    TaxFreeFlag, EnforceDate, ApplyerName) VALUES (5, 12, '2007-04-01', '2008-03-31', 1, 1, 0, 1, '2006-07-01', 'テスト');
INSERT INTO tmpFSCapitalCol (FSDataCode, ColNo, ColName, ItemCode) VALUES (5, 2, '資本金', 301), (5, 1, 'A,B', NULL);
INSERT INTO tmpFSCapitalRow (FSDataCode, RowNo, RowName, ItemCode, ItemType, Capital, NewStockProposeDeposit,
    CapitalReady, CapitalOther, CapitalOtherTotal, BenefitReady, BenefitOtherReadyFundSum, BenefitOtherCarryOver,
    BenefitTotal, SelfStock, SelfStockProposeDeposit, CapitalTotal, DiffOtherStock, DiffCarryOverHedge, DiffLand,
    DiffTotal, NewStockReserve, AssetTotal, OtherReady1)
VALUES (5, 1, '当期,"変動"', NULL, 2, 1234567, NULL, -999, -1999, 1000, 2000, 3000, 4000, 5000, -6000, 7000, 8000,
    9000, 10000, 11000, 12000, 13000, 14999, 99000);
INSERT INTO tmpFSCapitalRow (FSDataCode, RowNo, RowName, ItemCode, ItemType)
VALUES (5, 2, 'r2', 402, NULL), (5, 3, 'r3', 403, NULL), (5, 4, 'r4', 404, NULL), (5, 5, 'r5', 405, NULL),
       (5, 6, 'r6', 406, NULL), (5, 7, 'r7', 407, NULL), (5, 8, 'r8', 408, NULL), (5, 9, 'r9', 409, NULL),
       (5, 10, 'r10', 4010, NULL), (5, 11, 'r11', 4011, NULL);
