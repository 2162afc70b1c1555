-- Three periods, inserted oldest first so that the list order is the query's.
INSERT INTO tblIndex (IndexID, DataType, LinkCode, FYearNumber, FYearFrom, FYearTo, PrintFlag) VALUES
    (1, 0, 101, 10, '2006-04-01', '2007-03-31', 1),
    (2, 0, 102, 11, '2007-04-01', '2008-03-31', 1),
    (3, 0, 103, 12, '2008-04-01', '2009-03-31', 1);
