#!/usr/bin/env python3
"""Writes the SQL text of the sample sibling database (sample/Ledra.mdb).

The committed artefacts are the two SQL files this script writes beside it:
  10_item_master.sql   the sibling program's masters (items, statements,
                       equity rows and columns, detail headings)
  20_corporation.sql   one corporation with three fiscal periods

The amounts are derived here so that every statement adds up: subtotals and
totals are sums of their lines, the balance sheet balances because cash is the
balancing line, the income statement runs from sales down to net income, the
statement of changes in equity rolls each period's closing balance into the
next period's opening balance and ends where the balance sheet's net assets
stand. Change the inputs below and run the script again rather than editing
the SQL by hand.
"""

from pathlib import Path

HERE = Path(__file__).resolve().parent

# Form editions an item belongs to, as M_FSItem.EnforceDates lists them.
E_ALL = "20040401,20060701,20080401"
E_06 = "20060701,20080401"

# DocCode and statement name, shared with tblFSDocMaster/tblFSDocMaster06.
DOCS = [
    (1, "貸借対照表", 1),
    (2, "損益計算書", 2),
    (3, "完成工事原価報告書", 3),
    (4, "兼業事業売上原価報告書", 4),
    (5, "利益処分計算書", 5),
    (6, "損失処理計算書", 6),
    (7, "附属明細表", 9),
    (8, "株主資本等変動計算書", 7),
    (9, "注記表", 8),
]
DOC_NAME = {code: name for code, name, _ in DOCS}

NV = "NV"  # a level that does not exist for the item


class Item:
    def __init__(self, code, name, doc, section, seg1=NV, seg2=NV, seg3=NV,
                 kinds="HK", value_type=0, editions=E_ALL):
        self.code, self.name, self.doc = code, name, doc
        self.section, self.seg1, self.seg2, self.seg3 = section, seg1, seg2, seg3
        self.kinds, self.value_type, self.editions = kinds, value_type, editions
        self.sort_h = self.sort_k = None


def bs(code, name, section, seg1=NV, seg2=NV, seg3=NV, kinds="HK", vt=0, ed=E_ALL):
    return Item(code, name, 1, section, seg1, seg2, seg3, kinds, vt, ed)


def pl(code, name, section, kinds="HK", vt=0):
    return Item(code, name, 2, section, kinds=kinds, value_type=vt)


A, L, N = "資産の部", "負債の部", "純資産の部"
CUR, TAN, INT, INV = "流動資産", "有形固定資産", "無形固定資産", "投資その他の資産"
# kinds "-": a line the sibling program keeps but no form shows (the net
# amount of a fixed asset entered by direct deduction; the print driver moves
# it onto the form's line when that line is empty).
ITEMS = [
    bs(1, "現金預金", A, CUR),
    bs(2, "受取手形", A, CUR),
    bs(3, "完成工事未収入金", A, CUR),
    bs(4, "有価証券", A, CUR),
    bs(5, "未成工事支出金", A, CUR),
    bs(6, "材料貯蔵品", A, CUR),
    bs(7, "短期貸付金", A, CUR),
    bs(8, "前払費用", A, CUR),
    bs(9, "繰延税金資産", A, CUR, kinds="H"),
    bs(10, "その他", A, CUR, kinds="H"),
    bs(222, "その他", A, CUR, kinds="K"),
    bs(11, "貸倒引当金", A, CUR, vt=2),
    bs(12, "流動資産合計", A, CUR),
    bs(16, "建物・構築物", A, TAN, kinds="H"),
    bs(17, "建物・構築物（減価償却累計額控除後）", A, TAN, kinds="-"),
    bs(18, "減価償却累計額", A, TAN, kinds="H", vt=2),
    bs(19, "機械・運搬具", A, TAN, kinds="H"),
    bs(20, "機械・運搬具（減価償却累計額控除後）", A, TAN, kinds="-"),
    bs(21, "減価償却累計額", A, TAN, kinds="H", vt=2),
    bs(22, "工具器具・備品", A, TAN, kinds="H"),
    bs(23, "工具器具・備品（減価償却累計額控除後）", A, TAN, kinds="-"),
    bs(24, "減価償却累計額", A, TAN, kinds="H", vt=2),
    bs(220, "建物・構築物", A, TAN, kinds="K"),
    bs(221, "機械・運搬具・工具器具・備品", A, TAN, kinds="K"),
    bs(25, "土地", A, TAN),
    bs(371, "リース資産", A, TAN, kinds="H", ed=E_06),
    bs(372, "リース資産（減価償却累計額控除後）", A, TAN, kinds="-", ed=E_06),
    bs(373, "減価償却累計額", A, TAN, kinds="H", vt=2, ed=E_06),
    bs(26, "建設仮勘定", A, TAN),
    bs(27, "その他", A, TAN, kinds="H"),
    bs(28, "その他（減価償却累計額控除後）", A, TAN, kinds="-"),
    bs(31, "減価償却累計額", A, TAN, kinds="H", vt=2),
    bs(226, "その他", A, TAN, kinds="K"),
    bs(30, "有形固定資産計", A, TAN, kinds="H"),
    bs(228, "有形固定資産計", A, TAN, kinds="K"),
    bs(29, "特許権", A, INT, kinds="H"),
    bs(34, "借地権", A, INT, kinds="H"),
    bs(223, "のれん", A, INT, kinds="H", ed=E_06),
    bs(374, "リース資産", A, INT, kinds="H", ed=E_06),
    bs(36, "その他", A, INT, kinds="H"),
    bs(35, "無形固定資産計", A, INT, kinds="H"),
    bs(37, "投資有価証券", A, INV, kinds="H"),
    bs(38, "関係会社株式・関係会社出資金", A, INV, kinds="H"),
    bs(39, "長期貸付金", A, INV, kinds="H"),
    bs(41, "破産債権、更生債権等", A, INV, kinds="H"),
    bs(40, "長期前払費用", A, INV, kinds="H"),
    bs(42, "繰延税金資産", A, INV, kinds="H"),
    bs(43, "その他", A, INV, kinds="H"),
    bs(44, "貸倒引当金", A, INV, kinds="H", vt=2),
    bs(45, "投資その他の資産計", A, INV, kinds="H"),
    bs(225, "その他の資産", A, "固定資産", kinds="K"),
    bs(46, "固定資産合計", A, "固定資産"),
    bs(47, "創立費", A, "繰延資産", kinds="H"),
    bs(48, "開業費", A, "繰延資産", kinds="H"),
    bs(224, "株式交付費", A, "繰延資産", kinds="H", ed=E_06),
    bs(49, "社債発行費", A, "繰延資産", kinds="H"),
    bs(50, "開発費", A, "繰延資産", kinds="H"),
    bs(51, "繰延資産合計", A, "繰延資産", kinds="H"),
    bs(52, "資産合計", A),
    bs(53, "支払手形", L, "流動負債"),
    bs(54, "工事未払金", L, "流動負債"),
    bs(55, "短期借入金", L, "流動負債"),
    bs(375, "リース債務", L, "流動負債", kinds="H", ed=E_06),
    bs(56, "未払金", L, "流動負債"),
    bs(57, "未払費用", L, "流動負債", kinds="H"),
    bs(62, "未払法人税等", L, "流動負債", kinds="H"),
    bs(63, "繰延税金負債", L, "流動負債", kinds="H"),
    bs(58, "未成工事受入金", L, "流動負債"),
    bs(59, "預り金", L, "流動負債"),
    bs(60, "前受収益", L, "流動負債", kinds="H"),
    bs(61, "引当金", L, "流動負債"),
    bs(64, "その他", L, "流動負債", kinds="H"),
    bs(227, "その他", L, "流動負債", kinds="K"),
    bs(65, "流動負債合計", L, "流動負債"),
    bs(66, "社債", L, "固定負債", kinds="H"),
    bs(67, "長期借入金", L, "固定負債"),
    bs(376, "リース債務", L, "固定負債", kinds="H", ed=E_06),
    bs(68, "繰延税金負債", L, "固定負債", kinds="H"),
    bs(69, "引当金", L, "固定負債"),
    bs(70, "負ののれん", L, "固定負債", kinds="H", ed=E_06),
    bs(71, "その他", L, "固定負債"),
    bs(72, "固定負債合計", L, "固定負債"),
    bs(73, "負債合計", L),
    bs(74, "資本金", N, "株主資本", kinds="H", ed=E_06),
    bs(75, "新株式申込証拠金", N, "株主資本", kinds="H", ed=E_06),
    bs(76, "資本準備金", N, "株主資本", "資本剰余金", kinds="H", ed=E_06),
    bs(77, "その他資本剰余金", N, "株主資本", "資本剰余金", kinds="H", ed=E_06),
    bs(78, "資本剰余金合計", N, "株主資本", "資本剰余金", kinds="H", ed=E_06),
    bs(79, "利益準備金", N, "株主資本", "利益剰余金", kinds="H", ed=E_06),
    bs(89, "準備金", N, "株主資本", "利益剰余金", "その他利益剰余金", kinds="H", ed=E_06),
    bs(90, "積立金", N, "株主資本", "利益剰余金", "その他利益剰余金", kinds="H", ed=E_06),
    bs(91, "別途積立金", N, "株主資本", "利益剰余金", "その他利益剰余金", kinds="H", ed=E_06),
    bs(92, "繰越利益剰余金", N, "株主資本", "利益剰余金", "その他利益剰余金", kinds="H", vt=1, ed=E_06),
    bs(80, "利益剰余金合計", N, "株主資本", "利益剰余金", kinds="H", vt=1, ed=E_06),
    bs(81, "自己株式", N, "株主資本", kinds="H", vt=2, ed=E_06),
    bs(82, "自己株式申込証拠金", N, "株主資本", kinds="H", ed=E_06),
    bs(83, "株主資本合計", N, "株主資本", kinds="H", vt=1, ed=E_06),
    bs(84, "その他有価証券評価差額金", N, "評価・換算差額等", kinds="H", vt=1, ed=E_06),
    bs(85, "繰延ヘッジ損益", N, "評価・換算差額等", kinds="H", vt=1, ed=E_06),
    bs(86, "土地再評価差額金", N, "評価・換算差額等", kinds="H", vt=1, ed=E_06),
    bs(87, "評価・換算差額等合計", N, "評価・換算差額等", kinds="H", vt=1, ed=E_06),
    bs(88, "新株予約権", N, "新株予約権", kinds="H", ed=E_06),
    bs(230, "期首資本金", N, kinds="K", vt=1, ed=E_06),
    bs(231, "事業主借勘定", N, kinds="K", ed=E_06),
    bs(232, "事業主貸勘定", N, kinds="K", vt=2, ed=E_06),
    bs(233, "事業主利益（事業主損失）", N, kinds="K", vt=1, ed=E_06),
    bs(93, "純資産合計", N, vt=1, ed=E_06),
    bs(94, "負債純資産合計", N, ed=E_06),
    pl(101, "完成工事高", "売上高"),
    pl(102, "兼業事業売上高", "売上高"),
    pl(103, "売上高合計", "売上高"),
    pl(98, "完成工事原価", "売上原価"),
    pl(99, "兼業事業売上原価", "売上原価"),
    pl(100, "売上原価合計", "売上原価"),
    pl(104, "完成工事総利益（完成工事総損失）", "売上総利益", vt=1),
    pl(105, "兼業事業総利益（兼業事業総損失）", "売上総利益", vt=1),
    pl(106, "売上総利益（売上総損失）", "売上総利益", vt=1),
    pl(110, "役員報酬", "販売費及び一般管理費", kinds="H"),
    pl(111, "従業員給料手当", "販売費及び一般管理費"),
    pl(112, "退職金", "販売費及び一般管理費"),
    pl(113, "法定福利費", "販売費及び一般管理費"),
    pl(114, "福利厚生費", "販売費及び一般管理費"),
    pl(115, "修繕維持費", "販売費及び一般管理費"),
    pl(116, "事務用品費", "販売費及び一般管理費"),
    pl(117, "通信交通費", "販売費及び一般管理費"),
    pl(118, "動力用水光熱費", "販売費及び一般管理費"),
    pl(119, "調査研究費", "販売費及び一般管理費"),
    pl(120, "広告宣伝費", "販売費及び一般管理費"),
    pl(121, "貸倒引当金繰入額", "販売費及び一般管理費"),
    pl(122, "貸倒損失", "販売費及び一般管理費"),
    pl(123, "交際費", "販売費及び一般管理費"),
    pl(124, "寄付金", "販売費及び一般管理費"),
    pl(125, "地代家賃", "販売費及び一般管理費"),
    pl(126, "減価償却費", "販売費及び一般管理費"),
    pl(127, "開発費償却", "販売費及び一般管理費", kinds="H"),
    pl(128, "租税公課", "販売費及び一般管理費"),
    pl(129, "保険料", "販売費及び一般管理費"),
    pl(130, "雑費", "販売費及び一般管理費"),
    pl(131, "販売費及び一般管理費計", "販売費及び一般管理費"),
    pl(132, "営業利益（営業損失）", "営業損益", vt=1),
    pl(159, "受取利息及び配当金", "営業外収益"),
    pl(160, "その他", "営業外収益"),
    pl(161, "営業外収益合計", "営業外収益"),
    pl(162, "支払利息", "営業外費用"),
    pl(163, "貸倒引当金繰入額", "営業外費用", kinds="H"),
    pl(164, "貸倒損失", "営業外費用", kinds="H"),
    pl(165, "その他", "営業外費用"),
    pl(166, "営業外費用合計", "営業外費用"),
    pl(167, "経常利益（経常損失）", "経常損益", vt=1),
    pl(168, "前期損益修正益", "特別利益"),
    pl(169, "その他", "特別利益"),
    pl(170, "特別利益合計", "特別利益"),
    pl(171, "前期損益修正損", "特別損失"),
    pl(172, "その他", "特別損失"),
    pl(173, "特別損失合計", "特別損失"),
    pl(174, "税引前当期純利益（税引前当期純損失）", "純損益", kinds="H", vt=1),
    pl(175, "法人税、住民税及び事業税", "純損益", kinds="H"),
    pl(176, "法人税等調整額", "純損益", kinds="H", vt=1),
    pl(177, "当期純利益（当期純損失）", "純損益", kinds="H", vt=1),
    pl(234, "事業主利益（事業主損失）", "純損益", kinds="K", vt=1),
    Item(180, "材料費", 3, "完成工事原価", kinds="H"),
    Item(181, "労務費", 3, "完成工事原価", kinds="H"),
    Item(182, "（うち労務外注費）", 3, "完成工事原価", kinds="H"),
    Item(183, "外注費", 3, "完成工事原価", kinds="H"),
    Item(184, "経費", 3, "完成工事原価", kinds="H"),
    Item(185, "（うち人件費）", 3, "完成工事原価", kinds="H"),
    Item(186, "完成工事原価", 3, "完成工事原価", kinds="H"),
    # Figures outside the statements that the analysis needs; the print
    # driver turns the three T_FS columns into these items.
    Item(208, "受取手形割引高", 9, "注記"),
    Item(204, "受取手形裏書譲渡高", 9, "注記"),
    Item(207, "当期減価償却実施額", 9, "注記"),
]

# Statement of changes in equity. Each column's ItemCode names the row field
# holding its amounts; a cell's item code is the column code plus the row
# code, so row codes stay below 10.
CAPITAL_COLUMNS = [
    (600, "Capital", "資本金", "株主資本"),
    (610, "NewStockProposeDeposit", "新株式申込証拠金", "株主資本"),
    (620, "CapitalReady", "資本準備金", "株主資本"),
    (630, "CapitalOther", "その他資本剰余金", "株主資本"),
    (640, "CapitalOtherTotal", "資本剰余金合計", "株主資本"),
    (650, "BenefitReady", "利益準備金", "株主資本"),
    (670, "BenefitOtherReadyFundSum", "その他利益剰余金（準備金・積立金）", "株主資本"),
    (690, "BenefitOtherCarryOver", "繰越利益剰余金", "株主資本"),
    (700, "BenefitTotal", "利益剰余金合計", "株主資本"),
    (710, "SelfStock", "自己株式", "株主資本"),
    (720, "SelfStockProposeDeposit", "自己株式申込証拠金", "株主資本"),
    (730, "CapitalTotal", "株主資本合計", "株主資本"),
    (740, "DiffOtherStock", "その他有価証券評価差額金", "評価・換算差額等"),
    (750, "DiffCarryOverHedge", "繰延ヘッジ損益", "評価・換算差額等"),
    (760, "DiffLand", "土地再評価差額金", "評価・換算差額等"),
    (770, "DiffTotal", "評価・換算差額等合計", "評価・換算差額等"),
    (780, "NewStockReserve", "新株予約権", "新株予約権"),
    (790, "AssetTotal", "純資産合計", "純資産合計"),
]
# The reserves of other retained earnings in detail (side sheet columns).
DETAIL_FIELDS = ["OtherReady1", "OtherReady2", "OtherReady3",
                 "OtherFundSum1", "OtherFundSum2", "OtherFundSum3", "SeparatelyFundSum"]
ROW_FIELDS = [field for _, field, _, _ in CAPITAL_COLUMNS] + DETAIL_FIELDS + ["CapitalData"]

# ItemType: 10 balance, 20 change, 30 heading (no amounts), 40 total of changes.
CAPITAL_ROWS = [
    (1, "前期末残高", 1, 10),
    (2, "当期変動額", 0, 30),
    (3, "新株の発行", 2, 20),
    (4, "剰余金の配当", 3, 20),
    (5, "剰余金の配当に伴う利益準備金の積立", 4, 20),
    (6, "別途積立金の積立", 5, 20),
    (7, "当期純利益", 6, 20),
    (8, "株主資本以外の項目の当期変動額（純額）", 7, 20),
    (9, "当期変動額合計", 8, 40),
    (10, "当期末残高", 9, 10),
]

# Default headings of the reserves on the side sheet: FSItemID 89 is the
# 準備金 line of the balance sheet, 90 the 積立金 line.
ITEM_DETAILS = [
    (234, 89, "準備金１"), (763, 89, "準備金２"), (764, 89, "準備金３"),
    (235, 90, "積立金１"), (765, 90, "積立金２"), (766, 90, "積立金３"),
]


def equity_items():
    items = []
    for col_code, _, col_name, group in CAPITAL_COLUMNS:
        for _, row_name, row_code, row_type in CAPITAL_ROWS:
            if row_type == 30:
                continue
            items.append(Item(col_code + row_code, row_name, 8, group, col_name,
                              kinds="H", value_type=1, editions=E_06))
    return items


def assign_sort_numbers(items):
    h = k = 0
    for item in items:
        if "H" in item.kinds:
            h += 10
            item.sort_h = h
        if "K" in item.kinds:
            k += 10
            item.sort_k = k


# ---------------------------------------------------------------- SQL text

def lit(value):
    if value is None:
        return "NULL"
    if isinstance(value, bool):
        return "1" if value else "0"
    if isinstance(value, (int, float)):
        return str(int(value)) if float(value).is_integer() else repr(value)
    text = str(value).replace("'", "''")
    # Line breaks of note texts are CR LF, as the sibling program stores them.
    parts = text.split("\n")
    return " || char(13, 10) || ".join(f"'{part}'" for part in parts)


def insert(table, columns, values):
    return (f"INSERT INTO {table} ({', '.join(columns)}) VALUES "
            f"({', '.join(lit(v) for v in values)});")


def rows_of(table, columns, rows):
    """A block of positional INSERTs under one comment naming the columns."""
    out = [f"-- {table} ({', '.join(columns)})"]
    out += [f"INSERT INTO {table} VALUES ({', '.join(lit(v) for v in row)});" for row in rows]
    return out


# ---------------------------------------------------------------- the company

LEDRA_KEY = 3           # the sibling program's own applicant key
APPLY_DATA_ID = 1001    # this program's key, ApplyDataID of the sample application
COMPANY = "（株）北斗建設"

# Opening balances of the first period's statement of changes in equity.
OPENING_EQUITY = {
    "Capital": 50_000_000, "CapitalReady": 12_500_000, "BenefitReady": 8_400_000,
    "OtherReady1": 3_600_000, "OtherFundSum1": 5_200_000, "SeparatelyFundSum": 120_000_000,
    "BenefitOtherCarryOver": 63_218_447, "SelfStock": -2_150_000, "DiffOtherStock": 1_830_520,
}

# Period inputs. "scale" scales the working-capital lines of the newest
# period's balance sheet; depreciation is per asset class and builds up the
# accumulated depreciation lines from period to period.
PERIODS = [
    dict(code=7, number=38, start="2006-04-01", end="2007-03-31", meeting="2007-06-28",
         enforce_sub="", capital_sub=False, scale=0.88, sales=0.91, sga=0.96,
         dep=dict(b=5_472_000, m=13_604_100, t=1_310_850, l=0),
         tools_net=True, construction_in_progress=0, lease=0,
         dividend=4_892_500, reserve_transfer=10_000_000, new_shares=0,
         diff_change=310_220, tax_adjust=-320_000, special_loss=0,
         note_trust=0, note_discount=0, note_give=2_400_000, shares=100_000),
    dict(code=12, number=39, start="2007-04-01", end="2008-03-31", meeting="2008-06-27",
         enforce_sub="200804", capital_sub=False, scale=0.94, sales=0.97, sga=0.98,
         dep=dict(b=5_472_000, m=13_218_730, t=1_164_900, l=0),
         tools_net=False, construction_in_progress=6_300_000, lease=0,
         dividend=4_892_500, reserve_transfer=10_000_000, new_shares=20_000_000,
         diff_change=-1_208_400, tax_adjust=110_000, special_loss=1_250_000,
         note_trust=None, note_discount=8_200_000, note_give=0, shares=120_000),
    dict(code=15, number=40, start="2008-04-01", end="2009-03-31", meeting="2009-06-26",
         enforce_sub="200804", capital_sub=True, scale=1.0, sales=1.0, sga=1.0,
         dep=dict(b=5_472_000, m=12_831_450, t=1_042_700, l=1_680_000),
         tools_net=False, construction_in_progress=0, lease=8_400_000,
         dividend=5_892_500, reserve_transfer=0, new_shares=0,
         diff_change=-2_914_650, tax_adjust=-85_000, special_loss=2_318_400,
         note_trust=5_000_000, note_discount=12_600_000, note_give=3_150_000, shares=120_000),
]

# Accumulated depreciation at the end of the newest period; earlier periods
# are this less the later periods' depreciation.
ACCUMULATED_NEWEST = dict(b=96_318_200, m=118_402_331, t=10_021_456, l=1_680_000)
GROSS = dict(b=182_400_000, m=143_250_000, t=12_880_000)

# Working-capital lines of the newest period, in yen.
CURRENT_NEWEST = {
    2: 84_210_500, 3: 312_804_116, 4: 0, 5: 96_418_730, 6: 4_102_388, 7: 1_500_000,
    8: 2_318_400, 9: 4_210_000, 10: 3_894_102, 11: -2_980_000,
    53: 118_402_200, 54: 201_318_744, 55: 120_000_000, 56: 8_412_330, 57: 6_201_118,
    63: 0, 58: 88_640_000, 59: 3_812_400, 60: 0, 61: 2_400_000, 64: 4_205_612,
    67: 145_000_000, 69: 22_300_000, 66: 0, 68: 0, 70: 0, 71: 0,
}
FIXED_OTHER = {25: 210_500_000, 27: 0, 36: 1_240_000, 37: 18_620_400, 38: 10_000_000,
               39: 0, 41: 0, 40: 812_000, 42: 3_120_000, 43: 24_310_000, 44: 0}

# Income statement and cost report of the newest period.
SALES_NEWEST = {101: 1_284_731_562, 102: 46_820_400, 99: 31_204_880}
COST_NEWEST = {180: 231_004_118, 181: 98_530_220, 182: 12_400_000, 183: 612_877_409,
               184: 152_318_775, 185: 61_220_310}
SGA_NEWEST = {110: 36_000_000, 111: 48_213_600, 112: 0, 113: 10_884_213, 114: 2_130_455,
              115: 1_824_000, 116: 1_213_876, 117: 4_402_118, 118: 1_980_345, 119: 0,
              120: 620_000, 121: 312_000, 122: 0, 123: 3_118_240, 124: 150_000,
              125: 4_800_000, 127: 0, 128: 3_476_500, 129: 2_210_880, 130: 1_904_217}
NON_OPERATING = {159: 1_203_412, 160: 2_876_300, 162: 6_318_904, 163: 0, 164: 0, 165: 420_000}

# Renamed その他 lines (NameChangeFlag): the user typed what the line holds.
RENAMED = {10: "未収入金", 43: "保険積立金", 160: "雑収入", 172: "固定資産除却損"}


def scaled(value, factor):
    return int(round(value * factor))


def income_statement(period):
    v = {}
    f = period["sales"]
    v[101] = scaled(SALES_NEWEST[101], f)
    v[102] = scaled(SALES_NEWEST[102], f)
    v[99] = scaled(SALES_NEWEST[99], f)
    for code, amount in COST_NEWEST.items():
        v[code] = scaled(amount, f)
    dep_total = sum(period["dep"].values())
    v[126] = int(dep_total * 0.25)
    # The rest of the depreciation belongs to site costs (in 経費).
    v[184] += dep_total - v[126]
    v[186] = v[180] + v[181] + v[183] + v[184]
    v[98] = v[186]
    v[103] = v[101] + v[102]
    v[100] = v[98] + v[99]
    v[104] = v[101] - v[98]
    v[105] = v[102] - v[99]
    v[106] = v[104] + v[105]
    for code, amount in SGA_NEWEST.items():
        v[code] = scaled(amount, period["sga"])
    v[131] = sum(v[c] for c in list(SGA_NEWEST) + [126])
    v[132] = v[106] - v[131]
    v.update(NON_OPERATING)
    v[161] = v[159] + v[160]
    v[166] = v[162] + v[163] + v[164] + v[165]
    v[167] = v[132] + v[161] - v[166]
    v[168] = v[169] = 0
    v[170] = 0
    v[171] = 0
    v[172] = period["special_loss"]
    v[173] = v[171] + v[172]
    v[174] = v[167] + v[170] - v[173]
    v[175] = int(v[174] * 0.4069) // 100 * 100
    v[176] = period["tax_adjust"]
    v[177] = v[174] - v[175] - v[176]
    period["depreciation"] = dep_total
    return v


def equity_statement(period, opening):
    """Rows of the statement of changes in equity, field -> amount (None blank)."""
    net_income = period["net_income"]
    changes = {
        2: {"Capital": period["new_shares"] // 2, "CapitalReady": period["new_shares"] // 2},
        3: {"BenefitOtherCarryOver": -period["dividend"]},
        4: {},
        5: {"SeparatelyFundSum": period["reserve_transfer"],
            "BenefitOtherCarryOver": -period["reserve_transfer"]},
        6: {"BenefitOtherCarryOver": net_income},
        7: {"DiffOtherStock": period["diff_change"]},
    }
    changes = {code: {k: v for k, v in row.items() if v} for code, row in changes.items()}

    def with_totals(row, blanks):
        out = dict(row)
        sums = {
            "CapitalOtherTotal": ["CapitalReady", "CapitalOther"],
            "BenefitOtherReadyFundSum": DETAIL_FIELDS,
        }
        for total, parts in sums.items():
            if any(out.get(p) is not None for p in parts) or not blanks:
                out[total] = sum(out.get(p) or 0 for p in parts)
        chain = [
            ("BenefitTotal", ["BenefitReady", "BenefitOtherReadyFundSum", "BenefitOtherCarryOver"]),
            ("CapitalTotal", ["Capital", "NewStockProposeDeposit", "CapitalOtherTotal",
                              "BenefitTotal", "SelfStock", "SelfStockProposeDeposit"]),
            ("DiffTotal", ["DiffOtherStock", "DiffCarryOverHedge", "DiffLand"]),
            ("AssetTotal", ["CapitalTotal", "DiffTotal", "NewStockReserve"]),
        ]
        for total, parts in chain:
            if any(out.get(p) is not None for p in parts) or not blanks:
                out[total] = sum(out.get(p) or 0 for p in parts)
        if not blanks:
            for field in ROW_FIELDS:
                if field != "CapitalData":
                    out.setdefault(field, 0)
        return out

    opening_row = with_totals(opening, blanks=False)
    rows = {1: opening_row, 0: {}}
    for code, row in changes.items():
        rows[code] = with_totals(row, blanks=True)
    total_changes = {}
    for code in changes:
        for field, amount in rows[code].items():
            total_changes[field] = total_changes.get(field, 0) + amount
    rows[8] = with_totals({k: v for k, v in total_changes.items()
                           if k in DETAIL_FIELDS or k in (
                               "Capital", "NewStockProposeDeposit", "CapitalReady", "CapitalOther",
                               "BenefitReady", "BenefitOtherCarryOver", "SelfStock",
                               "SelfStockProposeDeposit", "DiffOtherStock", "DiffCarryOverHedge",
                               "DiffLand", "NewStockReserve")}, blanks=False)
    closing = {field: opening_row.get(field, 0) + rows[8].get(field, 0)
               for field in ROW_FIELDS if field != "CapitalData"}
    rows[9] = with_totals(closing, blanks=False)
    return rows


def balance_sheet(period, equity_closing):
    v = {}
    s = period["scale"]
    for code, amount in CURRENT_NEWEST.items():
        v[code] = scaled(amount, s) if amount > 0 else (-scaled(-amount, s) if amount else 0)
    v.update(FIXED_OTHER)
    v[62] = period["taxes_payable"]
    v[26] = period["construction_in_progress"]
    acc = period["accumulated"]
    v[16], v[18] = GROSS["b"], -acc["b"]
    v[19], v[21] = GROSS["m"], -acc["m"]
    v[17] = v[20] = v[28] = 0
    if period["tools_net"]:
        # Entered by direct deduction: only the net line holds an amount.
        v[22], v[23], v[24] = 0, GROSS["t"] - acc["t"], 0
    else:
        v[22], v[23], v[24] = GROSS["t"], 0, -acc["t"]
    v[31] = 0
    v[371], v[372], v[373] = period["lease"], 0, -acc["l"]
    v[375] = period["lease"] // 5 - acc["l"] // 5 if period["lease"] else 0
    v[376] = period["lease"] - acc["l"] - v[375] if period["lease"] else 0
    for code in (29, 34, 223, 374, 47, 48, 224, 49, 50):
        v[code] = 0
    # Net assets as the statement of changes in equity closes them.
    e = equity_closing
    v[74], v[75] = e["Capital"], e["NewStockProposeDeposit"]
    v[76], v[77], v[78] = e["CapitalReady"], e["CapitalOther"], e["CapitalOtherTotal"]
    v[79] = e["BenefitReady"]
    v[89] = e["OtherReady1"] + e["OtherReady2"] + e["OtherReady3"]
    v[90] = e["OtherFundSum1"] + e["OtherFundSum2"] + e["OtherFundSum3"]
    v[91] = e["SeparatelyFundSum"]
    v[92] = e["BenefitOtherCarryOver"]
    v[80] = e["BenefitTotal"]
    v[81], v[82], v[83] = e["SelfStock"], e["SelfStockProposeDeposit"], e["CapitalTotal"]
    v[84], v[85], v[86], v[87] = (e["DiffOtherStock"], e["DiffCarryOverHedge"],
                                  e["DiffLand"], e["DiffTotal"])
    v[88], v[93] = e["NewStockReserve"], e["AssetTotal"]

    v[30] = sum(v[c] for c in TANGIBLE_LINES)
    v[35] = sum(v[c] for c in INTANGIBLE_LINES)
    v[45] = sum(v[c] for c in INVESTMENT_LINES)
    v[46] = v[30] + v[35] + v[45]
    v[51] = sum(v[c] for c in DEFERRED_LINES)
    v[65] = sum(v[c] for c in CURRENT_LIABILITY_LINES)
    v[72] = sum(v[c] for c in FIXED_LIABILITY_LINES)
    v[73] = v[65] + v[72]
    v[94] = v[73] + v[93]
    # Cash is the balancing line.
    v[1] = v[94] - v[46] - v[51] - sum(v[c] for c in CURRENT_ASSET_LINES if c != 1)
    assert v[1] > 0, "cash would be negative"
    v[12] = sum(v[c] for c in CURRENT_ASSET_LINES)
    v[52] = v[12] + v[46] + v[51]
    assert v[52] == v[94]
    return v


CURRENT_ASSET_LINES = [1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11]
TANGIBLE_LINES = [16, 17, 18, 19, 20, 21, 22, 23, 24, 25, 371, 372, 373, 26, 27, 28, 31]
INTANGIBLE_LINES = [29, 34, 223, 374, 36]
INVESTMENT_LINES = [37, 38, 39, 41, 40, 42, 43, 44]
DEFERRED_LINES = [47, 48, 224, 49, 50]
CURRENT_LIABILITY_LINES = [53, 54, 55, 375, 56, 57, 62, 63, 58, 59, 60, 61, 64]
FIXED_LIABILITY_LINES = [66, 67, 376, 68, 69, 70, 71]


NOTES_COMMON = {
    "AccountWayAssetsCriteria":
        "(1) 有価証券の評価基準及び評価方法\n"
        "その他有価証券　時価のあるもの：決算日の市場価格等に基づく時価法（評価差額は全部純資産直入法により処理し、売却原価は移動平均法により算定）\n"
        "(2) たな卸資産の評価基準及び評価方法\n"
        "未成工事支出金：個別法による原価法\n"
        "材料貯蔵品：最終仕入原価法",
    "AccountWayFixAssetsAccumulate":
        "有形固定資産：定率法（ただし、平成10年4月1日以降に取得した建物（建物附属設備を除く）は定額法）\n"
        "無形固定資産：定額法",
    "AccountWayReserveSum":
        "貸倒引当金：債権の貸倒れによる損失に備えるため、一般債権については貸倒実績率により、貸倒懸念債権等特定の債権については個別に回収可能性を検討し、回収不能見込額を計上している。\n"
        "完成工事補償引当金：完成工事に係るかし担保の費用に備えるため、当期の完成工事高に対する将来の見積補償額に基づいて計上している。\n"
        "退職給付引当金：従業員の退職給付に備えるため、期末自己都合要支給額を計上している。",
    "AccountWayRevenuesExpensesSum": "完成工事高の計上は、工事完成基準によっている。",
    "AccountWayConsumptionTax": "消費税及び地方消費税に相当する額の会計処理は、税抜方式によっている。",
    "AccountWayOther": None,
    "StockDividendAtMiddle": "",
    "StockNewReserveRightAtEnd": None,
    "PLRealSales": "工事進行基準による完成工事高はない。",
}


def era_date(iso):
    year, month, day = (int(x) for x in iso.split("-"))
    return f"平成{year - 1988}年{month}月{day}日"


def notes(period, next_dividend, self_shares, accumulated_total):
    n = dict(NOTES_COMMON)
    n["StockTypeAndNumberAtEnd"] = f"普通株式　{period['shares']:,}株"
    n["StockSelfTypeAndNumberAtEnd"] = f"普通株式　{self_shares:,}株"
    n["StockDividendAtEnd"] = (
        f"{era_date(period['meeting'])}開催の定時株主総会において、次のとおり決議している。\n"
        f"普通株式の配当に関する事項\n"
        f"(1) 配当金の総額　{next_dividend:,}円\n"
        f"(2) 1株当たり配当額　50円\n"
        f"(3) 基準日　{era_date(period['end'])}")
    n["Other"] = (
        f"貸借対照表関係\n"
        f"有形固定資産の減価償却累計額　{accumulated_total:,}円\n"
        f"担保に供している資産　土地　180,000,000円（短期借入金 60,000,000円の担保）")
    return n


NOTE_COLUMNS = ["AccountWayAssetsCriteria", "AccountWayFixAssetsAccumulate", "AccountWayReserveSum",
                "AccountWayRevenuesExpensesSum", "AccountWayConsumptionTax", "AccountWayOther",
                "StockTypeAndNumberAtEnd", "StockSelfTypeAndNumberAtEnd", "StockDividendAtMiddle",
                "StockDividendAtEnd", "StockNewReserveRightAtEnd", "PLRealSales", "Other"]


def build_periods():
    # Accumulated depreciation per period, walking back from the newest.
    acc = dict(ACCUMULATED_NEWEST)
    for period in reversed(PERIODS):
        period["accumulated"] = dict(acc)
        acc = {k: acc[k] - period["dep"][k] for k in acc}
    opening = {field: OPENING_EQUITY.get(field, 0) for field in ROW_FIELDS if field != "CapitalData"}
    for index, period in enumerate(PERIODS):
        pl_values = income_statement(period)
        period["net_income"] = pl_values[177]
        period["taxes_payable"] = pl_values[175] - int(pl_values[175] * 0.45) // 1000 * 1000
        rows = equity_statement(period, opening)
        period["equity_rows"] = rows
        bs_values = balance_sheet(period, rows[9])
        values = dict(bs_values)
        values.update(pl_values)
        period["values"] = values
        opening = {k: v for k, v in rows[9].items()}
        next_dividend = PERIODS[index + 1]["dividend"] if index + 1 < len(PERIODS) else 5_892_500
        acc_total = sum(period["accumulated"][k] for k in ("b", "m", "t", "l"))
        period["notes"] = notes(period, next_dividend, 2_150, acc_total)


def write_master(items):
    out = ["-- Masters of the sample sibling database: the item master covering the",
           "-- statements of a construction business, the statement master, the rows",
           "-- and columns of the statement of changes in equity, and the default",
           "-- headings of the reserve detail lines. Written by make_sample.py; edit",
           "-- the script and run it again instead of editing this file.", ""]
    out.append("-- Statements.")
    out += rows_of("M_FSDoc", ["DocCode", "DocName", "SortNumber"], [list(d) for d in DOCS])
    out.append("")
    out.append("-- Items. SortNumber_H / SortNumber_K: order on a corporation's /")
    out.append("-- an individual's statements, Null when the item is not on them.")
    out.append("-- ItemValueType 0 amount positive, 1 either sign, 2 zero or negative.")
    cols = ["ItemCode", "ItemName", "DocCode", "DocName", "SectionName", "Segment1Name",
            "Segment2Name", "Segment3Name", "SortNumber_H", "SortNumber_K", "SortNumber_R",
            "ItemValueType", "EnforceDates"]
    out += rows_of("M_FSItem", cols, [
        [i.code, i.name, i.doc, DOC_NAME[i.doc], i.section, i.seg1, i.seg2, i.seg3,
         i.sort_h, i.sort_k, None, i.value_type, i.editions] for i in items])
    out.append("")
    out.append("-- Columns of the statement of changes in equity.")
    out += rows_of("M_FSCapitalCol", ["ColNo", "ColIndex", "ColName", "GridIndex", "ItemCode"],
                   [[no, no - 1, name, no, code]
                    for no, (code, _, name, _) in enumerate(CAPITAL_COLUMNS, 1)])
    out.append("")
    out.append("-- Rows; ItemType 10 balance, 20 change, 30 heading, 40 total of changes.")
    out += rows_of("M_FSCapitalRow", ["RowNo", "RowName", "ItemCode", "ItemType"],
                   [list(row) for row in CAPITAL_ROWS])
    out.append("")
    out.append("-- Default headings of the reserve detail lines.")
    out += rows_of("M_FSItemDetail", ["ID", "FSItemID", "ItemDetailName"],
                   [list(d) for d in ITEM_DETAILS])
    (HERE / "10_item_master.sql").write_text("\n".join(out) + "\n", encoding="utf-8")


def write_company(items):
    by_code = {i.code: i for i in items}
    out = ["-- The sample applicant of the sibling database: one corporation with three",
           "-- fiscal periods (第38期 to 第40期). Its T_MainData row carries",
           f"-- OtherSoftCode {APPLY_DATA_ID}, the ApplyDataID of the sample application file.",
           "-- Amounts are in yen. Written by make_sample.py; edit the script and run",
           "-- it again instead of editing this file.", ""]
    out.append(insert("T_MainData", ["MainDataCode", "OtherSoftCode", "ApplyerName"],
                      [LEDRA_KEY, APPLY_DATA_ID, COMPANY]))
    row_id = 0
    for period in PERIODS:
        code = period["code"]
        v = period["values"]
        out += ["", f"-- 第{period['number']}期 {period['start']} - {period['end']} (FSDataCode {code})"]
        out.append(insert("T_FS", [
            "FSDataCode", "MainDataCode", "FYearNumber", "FYearFrom", "FYearTo", "ApplyerName",
            "Distinction", "TaxType", "TaxFreeFlag", "UnitType", "CloseAccountType",
            "SideBusinessFlag", "MeetingDate", "EnforceDate", "EnforceDatesub", "VersionNumber",
            "OtherSoftPrefCode", "CapitalSubFlag", "NoteTrustDebt", "NoteReceiptBillDiscount",
            "NoteReceiptBillGive", "AccumulatedDepreciation"], [
            code, LEDRA_KEY, period["number"], period["start"], period["end"], COMPANY,
            1, 2, False, 1, 0, True, period["meeting"], "2006-07-01", period["enforce_sub"],
            "2.1.0", 0, period["capital_sub"], period["note_trust"], period["note_discount"],
            period["note_give"], period["depreciation"]]))
        out.append("")
        item_rows = []
        for item in items:
            if item.doc not in (1, 2, 3) or "20060701" not in item.editions:
                continue
            if "H" not in item.kinds and item.kinds != "-":
                continue
            row_id += 1
            amount = v.get(item.code, 0)
            renamed = item.code in RENAMED and amount != 0
            name = RENAMED[item.code] if renamed else item.name
            sort = item.sort_h if item.sort_h is not None else by_code[item.code - 1].sort_h
            item_rows.append([row_id, code, item.code, item.code, name, amount, renamed,
                              item.doc, sort])
        out += rows_of("P_FSItemData", ["ID", "FSDataCode", "FSItemID", "ItemCode", "ItemName",
                                        "ItemValue", "NameChangeFlag", "DocCode", "SortNumber"],
                       item_rows)
        out.append("")
        out.append(insert("T_FSNote", ["FSDataCode"] + NOTE_COLUMNS,
                          [code] + [period["notes"][c] for c in NOTE_COLUMNS]))
        out.append("")
        out += rows_of("T_FSCapitalCol", ["FSDataCode", "ColNo", "ColName", "ColIndex",
                                          "GridIndex", "ItemCode", "CapitalHeader"],
                       [[code, no, name, no - 1, no, col_code, header]
                        for no, (col_code, _, name, header) in enumerate(CAPITAL_COLUMNS, 1)])
        out.append("")
        capital_rows = []
        for row_no, row_name, row_code, row_type in CAPITAL_ROWS:
            row = period["equity_rows"][row_code] if row_type != 30 else {}
            capital_rows.append([code, row_no, row_name, row_code, row_type] +
                                [row.get(f) for f in ROW_FIELDS])
        out += rows_of("T_FSCapitalRow",
                       ["FSDataCode", "RowNo", "RowName", "ItemCode", "ItemType"] + ROW_FIELDS,
                       capital_rows)
        if period["capital_sub"]:
            out.append("")
            detail_cols = ["FSDataCode", "FSItemID", "FSItemDetailID", "DataText", "SubjectText"]
            out.append(insert("T_FSItemDetail", detail_cols, [code, 89, 234, "特別償却準備金", None]))
            out.append(insert("T_FSItemDetail", detail_cols, [code, 90, 235, "圧縮積立金", None]))
    (HERE / "20_corporation.sql").write_text("\n".join(out) + "\n", encoding="utf-8")


def main():
    items = ITEMS + equity_items()
    codes = [i.code for i in items]
    assert len(codes) == len(set(codes)), "duplicate item code"
    assign_sort_numbers(items)
    build_periods()
    write_master(items)
    write_company(items)


if __name__ == "__main__":
    main()
