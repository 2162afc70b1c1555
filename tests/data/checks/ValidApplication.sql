-- An application that satisfies every rule of both editions, modelled on the
-- sample: a corporation, no previous licence, three complete business years.
INSERT INTO tmpAPData (APDataCode, MainDataCode, EnforceDate, ApplierColumnName, ApplierColumnAddress,
    ApplierColumnPresident, ApplyDate, PrefCode1, ClasCtgr1, LcnsNum1A, LcnsNum1B, LcnsDate1, PrefCode2, ClasCtgr2,
    LcnsNum2A, LcnsNum2B, LcnsDate2, BaseDate, FYearFrom1, FYearTo1, FYearCtgr1A, FYearFrom2, FYearTo2, FYearFrom3,
    FYearTo3, Distinction, LastApl, FCObgt1, FCObgt2, TRNameKana, TRName, PSNameKana, PSName, OfficeCityCode,
    OfficeAddr, OfficeZipCode, OfficeTel, FType)
VALUES (1, 1001, '2008-04-01', '株式会社北斗建設', '北海道札幌市中央区北三条西四丁目１番地１', '代表取締役　山本　隆',
    '2009-07-15', 1, 1, '20', '012345', '2008-09-10', -1, 0, NULL, NULL, NULL, '2009-03-31', '2008-04-01',
    '2009-03-31', 1, '2007-04-01', '2008-03-31', '2006-04-01', '2007-03-31', 1, 1, 2, 2, 'ホクトケンセツ',
    '（株）北斗建設', 'ヤマモト　タカシ', '山本　隆', '01101', '北海道札幌市中央区北三条西四丁目１番地１', '060-0003',
    '011-231-4567', 1);
