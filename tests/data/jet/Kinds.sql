-- Every column kind the sibling program's writer can give, with the values
-- at their edges: Null beside a zero-length text, the smallest and largest
-- Integer, a Double without a short decimal form, Currency with four
-- decimals, dates before, on and after 1899-12-30 with times of day, a memo
-- longer than a data page, and Japanese text that Jet 4 stores as UTF-16.
CREATE TABLE Kinds (ID INTEGER, Small SMALLINT, Amount DOUBLE, Price CURRENCY, At DATETIME, Flag BOOLEAN, Name TEXT, Note LONGTEXT);
INSERT INTO Kinds VALUES (1, -32768, 0.1, 12.3456, '2024-02-29 13:45:07', 1, '北斗建設', '');
INSERT INTO Kinds VALUES (2, 32767, 1234.5678, -123456789.1234, '1899-12-30', 0, '', NULL);
INSERT INTO Kinds VALUES (3, NULL, 1e-7, 0, '1900-01-01 00:00:01', 0, NULL, replace(hex(zeroblob(20000)), '00', '漢'));
INSERT INTO Kinds VALUES (4, 7, 123456789012.5, NULL, NULL, 1, 'ｶﾅ～−∥', 'line1' || char(13, 10) || 'line2');
INSERT INTO Kinds VALUES (2147483647, 0, 0.30000000000000004, 1, '2999-12-31 23:59:59', 0, 'x', NULL);
