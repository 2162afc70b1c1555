-- The application row of EarlierApplyDoc1.txt and EarlierApplyDoc2.txt, of
-- the 2006-07 edition: a short licence number to pad, no second licence, two
-- fiscal years, half-width text in the columns that are widened, separators
-- in the remark, and the 2008 form's further amount, which this edition does
-- not carry.
INSERT INTO tmpAPData (APDataCode, MainDataCode, EnforceDate, ApplierColumnName, ApplierColumnAddress, ApplierColumnPresident,
    ContactPosition, ContactName, ContactTel, ContactFax, ApplyDate, PrefCode1, ClasCtgr1, LcnsNum1A, LcnsNum1B,
    LcnsDate1, PrefCode2, ClasCtgr2, LcnsNum2A, LcnsNum2B, LcnsDate2, BaseDate, FYearFrom1, FYearTo1, FYearCtgr1A,
    FYearCtgr1B, FYearFrom2, FYearTo2, FYearCtgr2A, FYearCtgr2B, FYearFrom3, FYearTo3, FYearCtgr3A, FYearCtgr3B,
    Distinction, LastApl, FCObgt1, FCObgt2, TRNameKana, TRName, PSNameKana, PSName, OfficeCityCode, OfficeAddr,
    OfficeZipCode, OfficeTel, Item01Single, Item01Plural, Item02Single, Item02Plural, Item03, Remarks, FType)
VALUES (3, 4, '2006-07-01', 'Minami Kensetsu 2', '大阪市北区1-2-3', '南 一郎', NULL, '北 二郎', '06-1111-2222',
    '06-1111-3333', '2007-09-10', 27, 2, '3', '98765', '2005-01-20', NULL, NULL, NULL, NULL, NULL, '2007-03-31',
    '2006-04-01', '2007-03-31', 1, 0, '2005-04-01', '2006-03-31', 1, 0, NULL, NULL, NULL, NULL, 1, 1, 1, 0, 'ﾐﾅﾐｹﾝｾﾂ',
    '南建設(株)', 'ﾐﾅﾐ ｲﾁﾛｳ', '南 一郎', '27127', '大阪市北区1-2-3', '530-0001', '06-1111-2222', 500, 0, 0, 250, 77,
    'a "b", c', 1);
