-- Master tables of SystemData.mdb, read only at run time: the lists of the
-- user interface, the statement names and the rule tables of the statement
-- checks.

-- Licensing authorities. Code 0 is the minister; 1 to 47 are the prefectures
-- by their JIS X 0401 codes, named with their 都道府県 suffix so that the
-- governor's title reads PrefName & "知事" (東京都知事).
CREATE TABLE tblPref (
    PrefID   INTEGER,
    PrefName TEXT
);

INSERT INTO tblPref (PrefID, PrefName) VALUES (0, '国土交通大臣');
INSERT INTO tblPref (PrefID, PrefName) VALUES (1, '北海道');
INSERT INTO tblPref (PrefID, PrefName) VALUES (2, '青森県');
INSERT INTO tblPref (PrefID, PrefName) VALUES (3, '岩手県');
INSERT INTO tblPref (PrefID, PrefName) VALUES (4, '宮城県');
INSERT INTO tblPref (PrefID, PrefName) VALUES (5, '秋田県');
INSERT INTO tblPref (PrefID, PrefName) VALUES (6, '山形県');
INSERT INTO tblPref (PrefID, PrefName) VALUES (7, '福島県');
INSERT INTO tblPref (PrefID, PrefName) VALUES (8, '茨城県');
INSERT INTO tblPref (PrefID, PrefName) VALUES (9, '栃木県');
INSERT INTO tblPref (PrefID, PrefName) VALUES (10, '群馬県');
INSERT INTO tblPref (PrefID, PrefName) VALUES (11, '埼玉県');
INSERT INTO tblPref (PrefID, PrefName) VALUES (12, '千葉県');
INSERT INTO tblPref (PrefID, PrefName) VALUES (13, '東京都');
INSERT INTO tblPref (PrefID, PrefName) VALUES (14, '神奈川県');
INSERT INTO tblPref (PrefID, PrefName) VALUES (15, '新潟県');
INSERT INTO tblPref (PrefID, PrefName) VALUES (16, '富山県');
INSERT INTO tblPref (PrefID, PrefName) VALUES (17, '石川県');
INSERT INTO tblPref (PrefID, PrefName) VALUES (18, '福井県');
INSERT INTO tblPref (PrefID, PrefName) VALUES (19, '山梨県');
INSERT INTO tblPref (PrefID, PrefName) VALUES (20, '長野県');
INSERT INTO tblPref (PrefID, PrefName) VALUES (21, '岐阜県');
INSERT INTO tblPref (PrefID, PrefName) VALUES (22, '静岡県');
INSERT INTO tblPref (PrefID, PrefName) VALUES (23, '愛知県');
INSERT INTO tblPref (PrefID, PrefName) VALUES (24, '三重県');
INSERT INTO tblPref (PrefID, PrefName) VALUES (25, '滋賀県');
INSERT INTO tblPref (PrefID, PrefName) VALUES (26, '京都府');
INSERT INTO tblPref (PrefID, PrefName) VALUES (27, '大阪府');
INSERT INTO tblPref (PrefID, PrefName) VALUES (28, '兵庫県');
INSERT INTO tblPref (PrefID, PrefName) VALUES (29, '奈良県');
INSERT INTO tblPref (PrefID, PrefName) VALUES (30, '和歌山県');
INSERT INTO tblPref (PrefID, PrefName) VALUES (31, '鳥取県');
INSERT INTO tblPref (PrefID, PrefName) VALUES (32, '島根県');
INSERT INTO tblPref (PrefID, PrefName) VALUES (33, '岡山県');
INSERT INTO tblPref (PrefID, PrefName) VALUES (34, '広島県');
INSERT INTO tblPref (PrefID, PrefName) VALUES (35, '山口県');
INSERT INTO tblPref (PrefID, PrefName) VALUES (36, '徳島県');
INSERT INTO tblPref (PrefID, PrefName) VALUES (37, '香川県');
INSERT INTO tblPref (PrefID, PrefName) VALUES (38, '愛媛県');
INSERT INTO tblPref (PrefID, PrefName) VALUES (39, '高知県');
INSERT INTO tblPref (PrefID, PrefName) VALUES (40, '福岡県');
INSERT INTO tblPref (PrefID, PrefName) VALUES (41, '佐賀県');
INSERT INTO tblPref (PrefID, PrefName) VALUES (42, '長崎県');
INSERT INTO tblPref (PrefID, PrefName) VALUES (43, '熊本県');
INSERT INTO tblPref (PrefID, PrefName) VALUES (44, '大分県');
INSERT INTO tblPref (PrefID, PrefName) VALUES (45, '宮崎県');
INSERT INTO tblPref (PrefID, PrefName) VALUES (46, '鹿児島県');
INSERT INTO tblPref (PrefID, PrefName) VALUES (47, '沖縄県');

-- Licence classes (般特の区分): 1 general, 2 special, 3 both.
CREATE TABLE tblHantoku (
    HantokuID   INTEGER,
    HantokuText TEXT
);

INSERT INTO tblHantoku (HantokuID, HantokuText) VALUES (1, '一般');
INSERT INTO tblHantoku (HantokuID, HantokuText) VALUES (2, '特定');
INSERT INTO tblHantoku (HantokuID, HantokuText) VALUES (3, '一般・特定');

-- Review courses offered in the print menu: 1 regular, 3 express. The
-- names are those of the menu's two course buttons.
CREATE TABLE tblService (
    ServiceID   INTEGER,
    ServiceName TEXT,
    SortNumber  INTEGER
);

INSERT INTO tblService (ServiceID, ServiceName, SortNumber) VALUES (1, 'レギュラー（10営業日以内）', 1);
INSERT INTO tblService (ServiceID, ServiceName, SortNumber) VALUES (3, 'エクスプレス（3営業日以内）', 2);

-- Statement names by DocCode for statements of the 2004-04-01 form edition.
-- DocCode agrees with M_FSItem.DocCode and M_FSDoc of the sibling database.
CREATE TABLE tblFSDocMaster (
    DocCode INTEGER,
    DocName TEXT
);

INSERT INTO tblFSDocMaster (DocCode, DocName) VALUES (1, '貸借対照表');
INSERT INTO tblFSDocMaster (DocCode, DocName) VALUES (2, '損益計算書');
INSERT INTO tblFSDocMaster (DocCode, DocName) VALUES (3, '完成工事原価報告書');
INSERT INTO tblFSDocMaster (DocCode, DocName) VALUES (4, '兼業事業売上原価報告書');
INSERT INTO tblFSDocMaster (DocCode, DocName) VALUES (5, '利益処分計算書');
INSERT INTO tblFSDocMaster (DocCode, DocName) VALUES (6, '損失処理計算書');
INSERT INTO tblFSDocMaster (DocCode, DocName) VALUES (7, '附属明細表');

-- The same for the 2006-07-01 edition, in which the statement of changes in
-- equity and the notes replaced the appropriation statements.
CREATE TABLE tblFSDocMaster06 (
    DocCode INTEGER,
    DocName TEXT
);

INSERT INTO tblFSDocMaster06 (DocCode, DocName) VALUES (1, '貸借対照表');
INSERT INTO tblFSDocMaster06 (DocCode, DocName) VALUES (2, '損益計算書');
INSERT INTO tblFSDocMaster06 (DocCode, DocName) VALUES (3, '完成工事原価報告書');
INSERT INTO tblFSDocMaster06 (DocCode, DocName) VALUES (4, '兼業事業売上原価報告書');
INSERT INTO tblFSDocMaster06 (DocCode, DocName) VALUES (7, '附属明細表');
INSERT INTO tblFSDocMaster06 (DocCode, DocName) VALUES (8, '株主資本等変動計算書');
INSERT INTO tblFSDocMaster06 (DocCode, DocName) VALUES (9, '注記表');

-- Pairwise relations between item amounts of one statement. A row applies to
-- corporations when TypeFlag_H is set and to individuals when TypeFlag_K is
-- set, for statements of the form edition EnforceDate. SignNum: 0 equal,
-- 1 different, 2 left >= right, 3 left <= right, 4 left > right,
-- 5 left < right, 6 left entered, 7 both entered or both absent, 8 not both
-- non-zero.
CREATE TABLE tblFSCheckMaster (
    TitleText     TEXT,
    LeftItemNum   INTEGER,
    LeftItemText  TEXT,
    RightItemNum  INTEGER,
    RightItemText TEXT,
    SignNum       INTEGER,
    TypeFlag_H    BOOLEAN,
    TypeFlag_K    BOOLEAN,
    EnforceDate   DATETIME,
    SortNumber    INTEGER
);

-- Item names the analysing body cannot interpret (an unrenamed その他 line,
-- for example), by kind of applicant, form edition and statement.
CREATE TABLE tblFSInvalidItemList (
    Distinction INTEGER,
    EnforceDate DATETIME,
    DocCode     INTEGER,
    ItemName    TEXT
);
