-- Periods across the Heisei-Reiwa change, two of the same start, an
-- individual's year number without dates.
INSERT INTO tblIndex (IndexID, DataType, FYearNumber, FYearFrom, FYearTo) VALUES
    (7, 0, 12, '2008-04-01', '2009-03-31'),
    (8, 0, 23, '2019-04-01', '2020-03-31'),
    (9, 1, 12345, NULL, NULL),
    (4, 0, 11, '2008-04-01', '2009-03-31'),
    (2, 0, 12, '2008-04-01', '2009-03-31');
