-- The application row of ApplyDoc1.txt and ApplyDoc2.txt: licence numbers
-- 7 / 4321 / Null / "AB", half-width text in the full-width columns,
-- separators and a two-line remark.
INSERT INTO tmpAPData (APDataCode, MainDataCode, EnforceDate, ApplierColumnName, ApplierColumnAddress, ApplierColumnPresident,
    ContactPosition, ContactName, ContactTel, ContactFax, ApplyDate, PrefCode1, ClasCtgr1, LcnsNum1A, LcnsNum1B,
    LcnsDate1, PrefCode2, ClasCtgr2, LcnsNum2A, LcnsNum2B, LcnsDate2, BaseDate, FYearFrom1, FYearTo1, FYearCtgr1A,
    FYearCtgr1B, FYearFrom2, FYearTo2, FYearCtgr2A, FYearCtgr2B, FYearFrom3, FYearTo3, FYearCtgr3A, FYearCtgr3B,
    Distinction, LastApl, FCObgt1, FCObgt2, TRNameKana, TRName, PSNameKana, PSName, OfficeCityCode, OfficeAddr,
    OfficeZipCode, OfficeTel, Item01Single, Item01Plural, Item02Single, Item02Plural, Item03, Remarks, FType)
VALUES (5, 9, '2008-04-01', 'ABC,1', 'Tokyo "1-2"', '代表 太郎', '経理部長', '山田,花子', '03-1234-5678', NULL,
    '2008-11-05', 13, 1, '7', '4321', '2006-03-31', 0, 3, NULL, 'AB', '2001-04-01', '2008-03-31', '2007-04-01',
    '2008-03-31', 1, 0, '2006-04-01', '2007-03-31', 1, 1, NULL, NULL, 0, NULL, 1, 2, 10, 0, 'ｱｲｳ', '株式会社ＡＢＣ',
    'ﾔﾏﾀ', '山田', '13101', '千代田区1-1', '100-0001', '03-0000-0000', 1234, 0, -5.5, 1000000, 77,
    'line1' || char(13) || char(10) || 'line2', 2);
