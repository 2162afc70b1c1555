-- The twelve tables of the sibling financial-statements program (Ledra) as this
-- program reads them. Ledra_dummy.mdb is exactly these tables, empty: it keeps
-- the links of SystemData.mdb valid when an applicant has no sibling database.
-- Declared types carry the field types the data access layer reports, so they
-- must stay within INTEGER, SMALLINT, DOUBLE, CURRENCY, DATETIME, BOOLEAN,
-- TEXT and LONGTEXT. The working copies in SystemData.mdb (tmpFSInfoData and
-- its companions) repeat the columns of T_FS, P_FSItemData, T_FSNote,
-- T_FSCapitalRow and T_FSCapitalCol in the same order with the same types.

-- The sibling program's applicants; OtherSoftCode holds this program's key.
CREATE TABLE T_MainData (
    MainDataCode  INTEGER,
    OtherSoftCode INTEGER,
    ApplyerName   TEXT
);

-- One row per fiscal period of an applicant.
CREATE TABLE T_FS (
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

-- Statement items of a period, amounts in yen.
CREATE TABLE P_FSItemData (
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

-- Notes to the statements, one row per period; the column order is the order
-- of the note records in the QR payload.
CREATE TABLE T_FSNote (
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

-- Rows of the statement of changes in equity (株主資本等変動計算書), one amount
-- column per equity column, in yen.
CREATE TABLE T_FSCapitalRow (
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

-- Columns of the statement of changes in equity of a period.
CREATE TABLE T_FSCapitalCol (
    FSDataCode    INTEGER,
    ColNo         INTEGER,
    ColName       TEXT,
    ColIndex      INTEGER,
    GridIndex     INTEGER,
    ItemCode      INTEGER,
    CapitalHeader TEXT
);

-- Item master: one row per statement line the sibling program knows.
CREATE TABLE M_FSItem (
    ItemCode      INTEGER,
    ItemName      TEXT,
    DocCode       INTEGER,
    DocName       TEXT,
    SectionName   TEXT,
    Segment1Name  TEXT,
    Segment2Name  TEXT,
    Segment3Name  TEXT,
    SortNumber_H  INTEGER,
    SortNumber_K  INTEGER,
    SortNumber_R  INTEGER,
    ItemValueType INTEGER,
    EnforceDates  TEXT
);

-- Statement master.
CREATE TABLE M_FSDoc (
    DocCode    INTEGER,
    DocName    TEXT,
    SortNumber INTEGER
);

-- Column master of the statement of changes in equity.
CREATE TABLE M_FSCapitalCol (
    ColNo     INTEGER,
    ColIndex  INTEGER,
    ColName   TEXT,
    GridIndex INTEGER,
    ItemCode  INTEGER
);

-- Row master of the statement of changes in equity.
CREATE TABLE M_FSCapitalRow (
    RowNo    INTEGER,
    RowName  TEXT,
    ItemCode INTEGER,
    ItemType INTEGER
);

-- Default headings of the detail lines of an item (the reserves of other
-- retained earnings on the equity side sheet).
CREATE TABLE M_FSItemDetail (
    ID             INTEGER,
    FSItemID       INTEGER,
    ItemDetailName TEXT
);

-- A period's own detail lines; DataText overrides the master heading.
CREATE TABLE T_FSItemDetail (
    FSDataCode     INTEGER,
    FSItemID       INTEGER,
    FSItemDetailID INTEGER,
    DataText       TEXT,
    SubjectText    TEXT,
    Col01          TEXT,
    Col02          TEXT,
    Col03          TEXT,
    Col04          TEXT,
    Col05          TEXT,
    Col06          TEXT,
    Col07          TEXT,
    Col08          TEXT
);
