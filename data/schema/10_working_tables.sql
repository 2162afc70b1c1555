-- Working tables of SystemData.mdb: emptied at every start, filled during the
-- run. Keys are handed out by the program as the current maximum + 1, so no
-- column is an auto-number. Declared types carry the field types the data
-- access layer reports (INTEGER long, SMALLINT integer, DOUBLE, CURRENCY,
-- DATETIME stored as 'YYYY-MM-DD', BOOLEAN stored 1/0, TEXT, LONGTEXT memo).

-- The fiscal periods that can be printed, one row per period.
CREATE TABLE tblIndex (
    IndexID      INTEGER,
    MainDataCode INTEGER,
    DataType     INTEGER,
    LinkCode     INTEGER,
    FileName     TEXT,
    ApplyerName  TEXT,
    FYearNumber  DOUBLE,
    FYearFrom    DATETIME,
    FYearTo      DATETIME,
    PrintFlag    BOOLEAN DEFAULT 0
);

-- The application record, one row per run. After the three key columns come
-- the form fields of the application data file's [DocData] section: every
-- column a check, a payload or a printed form reads. A [DocData] record
-- naming a column that is not here makes the insert fail, so the list is the
-- contract with the parent application.
CREATE TABLE tmpAPData (
    APDataCode             INTEGER,
    MainDataCode           INTEGER,
    EnforceDate            DATETIME,
    ApplyDoc1              INTEGER,
    ApplyDoc2              INTEGER,
    -- applicant column (申請者欄) and the contact person
    ApplierColumnName      TEXT,
    ApplierColumnAddress   TEXT,
    ApplierColumnAddress1  TEXT,  -- registered address when it differs
    ApplierColumnPresident TEXT,
    ApplierColumnCreName   TEXT,  -- creator of the documents (作成者)
    ContactPosition        TEXT,
    ContactName            TEXT,
    ContactTel             TEXT,
    ContactFax             TEXT,
    ApplyDate              DATETIME,
    -- construction licence now (1) and at the previous application (2):
    -- PrefCode 0 minister, 1-47 governor of that prefecture, -1 not set;
    -- ClasCtgr 1 general, 2 special, 3 both, 0 not set
    PrefCode1              INTEGER,
    ClasCtgr1              INTEGER,
    LcnsNum1A              TEXT,
    LcnsNum1B              TEXT,
    LcnsDate1              DATETIME,
    PrefCode2              INTEGER,
    ClasCtgr2              INTEGER,
    LcnsNum2A              TEXT,
    LcnsNum2B              TEXT,
    LcnsDate2              DATETIME,
    BaseDate               DATETIME,
    -- the three business years under review, newest first
    FYearFrom1             DATETIME,
    FYearTo1               DATETIME,
    FYearCtgr1A            INTEGER,
    FYearCtgr1B            INTEGER,
    FYearFrom2             DATETIME,
    FYearTo2               DATETIME,
    FYearCtgr2A            INTEGER,
    FYearCtgr2B            INTEGER,
    FYearFrom3             DATETIME,
    FYearTo3               DATETIME,
    FYearCtgr3A            INTEGER,
    FYearCtgr3B            INTEGER,
    Distinction            INTEGER,  -- 1 corporation, 2 individual
    LastApl                INTEGER,
    FCObgt1                INTEGER,
    FCObgt2                INTEGER,
    TRNameKana             TEXT,
    TRName                 TEXT,
    PSNameKana             TEXT,
    PSName                 TEXT,
    OfficeCityCode         TEXT,
    OfficeAddr             TEXT,
    OfficeZipCode          TEXT,
    OfficeTel              TEXT,
    -- amounts in thousands of yen: depreciation (01) and discounted notes
    -- (02), single and consolidated; Item03 a further amount of the 2008 form
    Item01Single           DOUBLE,
    Item01Plural           DOUBLE,
    Item02Single           DOUBLE,
    Item02Plural           DOUBLE,
    Item03                 DOUBLE,
    Remarks                LONGTEXT,
    FType                  INTEGER
);

-- The periods copied from the sibling database, current layout. Each of the
-- five tables holds every column of its source table (T_FS, P_FSItemData,
-- T_FSNote, T_FSCapitalRow, T_FSCapitalCol) in the same order with the same
-- declared type, because the copy walks the source fields by name.
CREATE TABLE tmpFSInfoData (
    FSDataCode              INTEGER,
    MainDataCode            INTEGER,
    FYearNumber             DOUBLE,
    FYearFrom               DATETIME,
    FYearTo                 DATETIME,
    ApplyerName             TEXT,
    Distinction             INTEGER,
    TaxType                 INTEGER,
    TaxFreeFlag             BOOLEAN,
    UnitType                INTEGER,
    CloseAccountType        INTEGER,
    SideBusinessFlag        BOOLEAN,
    MeetingDate             DATETIME,
    EnforceDate             DATETIME,
    EnforceDatesub          TEXT,
    VersionNumber           TEXT,
    OtherSoftPrefCode       INTEGER,
    CapitalSubFlag          BOOLEAN,
    NoteTrustDebt           DOUBLE,
    NoteReceiptBillDiscount DOUBLE,
    NoteReceiptBillGive     DOUBLE,
    AccumulatedDepreciation DOUBLE
);

CREATE TABLE tmpFSItemData (
    ID             INTEGER,
    FSDataCode     INTEGER,
    FSItemID       INTEGER,
    ItemCode       INTEGER,
    ItemName       TEXT,
    ItemValue      DOUBLE,
    NameChangeFlag BOOLEAN,
    DocCode        INTEGER,
    SortNumber     INTEGER
);

CREATE TABLE tmpFSNoteData (
    FSDataCode                    INTEGER,
    AccountWayAssetsCriteria      LONGTEXT,
    AccountWayFixAssetsAccumulate LONGTEXT,
    AccountWayReserveSum          LONGTEXT,
    AccountWayRevenuesExpensesSum LONGTEXT,
    AccountWayConsumptionTax      LONGTEXT,
    AccountWayOther               LONGTEXT,
    StockTypeAndNumberAtEnd       LONGTEXT,
    StockSelfTypeAndNumberAtEnd   LONGTEXT,
    StockDividendAtMiddle         LONGTEXT,
    StockDividendAtEnd            LONGTEXT,
    StockNewReserveRightAtEnd     LONGTEXT,
    PLRealSales                   LONGTEXT,
    Other                         LONGTEXT
);

CREATE TABLE tmpFSCapitalRow (
    FSDataCode               INTEGER,
    RowNo                    INTEGER,
    RowName                  TEXT,
    ItemCode                 INTEGER,
    ItemType                 INTEGER,
    Capital                  DOUBLE,
    NewStockProposeDeposit   DOUBLE,
    CapitalReady             DOUBLE,
    CapitalOther             DOUBLE,
    CapitalOtherTotal        DOUBLE,
    BenefitReady             DOUBLE,
    BenefitOtherReadyFundSum DOUBLE,
    BenefitOtherCarryOver    DOUBLE,
    BenefitTotal             DOUBLE,
    SelfStock                DOUBLE,
    SelfStockProposeDeposit  DOUBLE,
    CapitalTotal             DOUBLE,
    DiffOtherStock           DOUBLE,
    DiffCarryOverHedge       DOUBLE,
    DiffLand                 DOUBLE,
    DiffTotal                DOUBLE,
    NewStockReserve          DOUBLE,
    AssetTotal               DOUBLE,
    OtherReady1              DOUBLE,
    OtherReady2              DOUBLE,
    OtherReady3              DOUBLE,
    OtherFundSum1            DOUBLE,
    OtherFundSum2            DOUBLE,
    OtherFundSum3            DOUBLE,
    SeparatelyFundSum        DOUBLE,
    CapitalData              DOUBLE
);

CREATE TABLE tmpFSCapitalCol (
    FSDataCode    INTEGER,
    ColNo         INTEGER,
    ColName       TEXT,
    ColIndex      INTEGER,
    GridIndex     INTEGER,
    ItemCode      INTEGER,
    CapitalHeader TEXT
);

-- Statements of an older layout. Nothing fills them any more; they are
-- emptied at start with the others and must exist for that.
CREATE TABLE tmpOldFSInfoData (
    FSDataCode        INTEGER,
    MainDataCode      INTEGER,
    ApplyerName       TEXT,
    FYearNumber       DOUBLE,
    FYearFrom         DATETIME,
    FYearTo           DATETIME,
    Distinction       INTEGER,
    TaxType           INTEGER,
    TaxFreeFlag       BOOLEAN,
    UnitType          INTEGER,
    RoundType         INTEGER,
    KeisinFlag        BOOLEAN,
    MeetingDate       DATETIME,
    EnforceDate       DATETIME,
    SideBusinessFlag  BOOLEAN,
    StockDiv_Yen      DOUBLE,
    StockDiv_Sen      DOUBLE,
    OtherSoftData     TEXT,
    OtherSoftPrefCode INTEGER,
    VersionNumber     TEXT
);

CREATE TABLE tmpOldFSItemData (
    ID             INTEGER,
    FSDataCode     INTEGER,
    ItemCode       INTEGER,
    ItemName       TEXT,
    ItemValue      DOUBLE,
    DocCode        INTEGER,
    SortNumber     INTEGER,
    NameChangeFlag BOOLEAN,
    NoAddFlag      BOOLEAN,
    OrgFlag        BOOLEAN,
    InputFlag      BOOLEAN
);

CREATE TABLE tmpOldFSNoteData (
    FSDataCode    INTEGER,
    DocCode       INTEGER,
    NoteCode_Main INTEGER,
    NoteMasterID  INTEGER,
    SortNumber    INTEGER,
    NoteText      LONGTEXT
);
