#!/usr/bin/env python3
"""Writes the reference data of the statement checks from one description:

- DbtData0607H.txt (corporations, check numbers 400-540) and
  DbtData0607K.txt (individuals, 660-681): the sums a statement must add up
  to, as records in code page 932 with CR LF line ends;
- schema/50_check_rules.sql: the rows of tblFSCheckMaster (relations between
  two items) and tblFSInvalidItemList (item names the agency cannot read).

Every item code is checked against the sample item master
(sample/10_item_master.sql), so the rules and the master cannot drift apart.
Edit this script and run it again rather than editing the files it writes.
"""

import os
import re

HERE = os.path.dirname(os.path.abspath(__file__))

# ---------------------------------------------------------------- item master

def master_codes():
    codes = {}
    pattern = re.compile(r"INSERT INTO M_FSItem VALUES \((\d+), '([^']*)'")
    with open(os.path.join(HERE, "sample", "10_item_master.sql"), encoding="utf-8") as f:
        for line in f:
            m = pattern.match(line)
            if m:
                codes[int(m.group(1))] = m.group(2)
    return codes


# ---------------------------------------------------------------- sums
# A sum: (title, label of the computed sum, label of the target, target, terms).
# A negative term is subtracted. Lines stored as negative amounts (allowances,
# accumulated depreciation, treasury shares, 事業主貸) are added: their sign is
# already in the amount.

CURRENT_ASSETS = [1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11]
TANGIBLE = [16, 17, 18, 19, 20, 21, 22, 23, 24, 25, 371, 372, 373, 26, 27, 28, 31]
INTANGIBLE = [29, 34, 223, 374, 36]
INVESTMENTS = [37, 38, 39, 41, 40, 42, 43, 44]
DEFERRED = [47, 48, 224, 49, 50]
CURRENT_LIABILITIES = [53, 54, 55, 375, 56, 57, 62, 63, 58, 59, 60, 61, 64]
FIXED_LIABILITIES = [66, 67, 376, 68, 69, 70, 71]
SGA = list(range(110, 131))

EQUITY_COLUMNS = [
    (600, "資本金"), (610, "新株式申込証拠金"), (620, "資本準備金"), (630, "その他資本剰余金"),
    (640, "資本剰余金合計"), (650, "利益準備金"), (670, "その他利益剰余金（準備金・積立金）"),
    (690, "繰越利益剰余金"), (700, "利益剰余金合計"), (710, "自己株式"), (720, "自己株式申込証拠金"),
    (730, "株主資本合計"), (740, "その他有価証券評価差額金"), (750, "繰延ヘッジ損益"),
    (760, "土地再評価差額金"), (770, "評価・換算差額等合計"), (780, "新株予約権"), (790, "純資産合計"),
]
EQUITY_ROWS = [
    (1, "前期末残高"), (2, "新株の発行"), (3, "剰余金の配当"), (4, "剰余金の配当に伴う利益準備金の積立"),
    (5, "別途積立金の積立"), (6, "当期純利益"), (7, "株主資本以外の項目の当期変動額（純額）"),
    (8, "当期変動額合計"), (9, "当期末残高"),
]
# Columns that total others, row by row.
EQUITY_COLUMN_TOTALS = [
    (640, [620, 630]),
    (700, [650, 670, 690]),
    (730, [600, 610, 640, 700, 710, 720]),
    (770, [740, 750, 760]),
    (790, [730, 770, 780]),
]
# Balance sheet lines and the equity column whose closing balance they show.
BALANCE_TO_EQUITY = [
    ([74], 600), ([75], 610), ([76], 620), ([77], 630), ([78], 640), ([79], 650),
    ([89, 90, 91], 670), ([92], 690), ([80], 700), ([81], 710), ([82], 720), ([83], 730),
    ([84], 740), ([85], 750), ([86], 760), ([87], 770), ([88], 780), ([93], 790),
]


def bs_sum(name, target, terms):
    return ("貸借対照表の" + name + "が各科目の合計と一致していません", name + "（各科目の合計）",
            "貸借対照表の" + name, target, terms)


def pl_sum(name, target, terms):
    return ("損益計算書の" + name + "の計算が合っていません", name + "（計算値）",
            "損益計算書の" + name, target, terms)


# A total checked a second way, over a longer route than its own subtotal
# rule. A wrong total fails both rules with the same amounts, so the second
# one names its route in its title and label: the list never shows one
# paragraph twice.
def bs_route(name, parts, target, terms):
    return ("貸借対照表の" + name + "が" + parts + "の合計と一致していません", parts + "の合計",
            "貸借対照表の" + name, target, terms)


def pl_route(name, start, target, terms):
    return ("損益計算書の" + name + "が" + start + "から計算した額と一致していません", start + "から計算した" + name,
            "損益計算書の" + name, target, terms)


def corporation_sums():
    sums = [
        bs_sum("流動資産合計", 12, CURRENT_ASSETS),
        bs_sum("有形固定資産計", 30, TANGIBLE),
        bs_sum("無形固定資産計", 35, INTANGIBLE),
        bs_sum("投資その他の資産計", 45, INVESTMENTS),
        bs_sum("固定資産合計", 46, [30, 35, 45]),
        bs_sum("繰延資産合計", 51, DEFERRED),
        bs_sum("資産合計", 52, [12, 46, 51]),
        bs_sum("流動負債合計", 65, CURRENT_LIABILITIES),
        bs_sum("固定負債合計", 72, FIXED_LIABILITIES),
        bs_sum("負債合計", 73, [65, 72]),
        bs_sum("資本剰余金合計", 78, [76, 77]),
        bs_sum("利益剰余金合計", 80, [79, 89, 90, 91, 92]),
        bs_sum("株主資本合計", 83, [74, 75, 78, 80, 81, 82]),
        bs_sum("評価・換算差額等合計", 87, [84, 85, 86]),
        bs_sum("純資産合計", 93, [83, 87, 88]),
        bs_sum("負債純資産合計", 94, [73, 93]),
        pl_sum("売上高合計", 103, [101, 102]),
        pl_sum("売上原価合計", 100, [98, 99]),
        pl_sum("完成工事総利益（完成工事総損失）", 104, [101, -98]),
        pl_sum("兼業事業総利益（兼業事業総損失）", 105, [102, -99]),
        pl_sum("売上総利益（売上総損失）", 106, [104, 105]),
        pl_sum("販売費及び一般管理費計", 131, SGA),
        pl_sum("営業利益（営業損失）", 132, [106, -131]),
        pl_sum("営業外収益合計", 161, [159, 160]),
        pl_sum("営業外費用合計", 166, [162, 163, 164, 165]),
        pl_sum("経常利益（経常損失）", 167, [132, 161, -166]),
        pl_sum("特別利益合計", 170, [168, 169]),
        pl_sum("特別損失合計", 173, [171, 172]),
        pl_sum("税引前当期純利益（税引前当期純損失）", 174, [167, 170, -173]),
        pl_sum("当期純利益（当期純損失）", 177, [174, -175, -176]),
        ("完成工事原価報告書の完成工事原価が各費目の合計と一致していません", "材料費・労務費・外注費・経費の合計",
         "完成工事原価報告書の完成工事原価", 186, [180, 181, 183, 184]),
        ("損益計算書の完成工事原価が完成工事原価報告書と一致していません", "完成工事原価報告書の完成工事原価",
         "損益計算書の完成工事原価", 98, [186]),
    ]
    for column, name in EQUITY_COLUMNS:
        sums.append(("株主資本等変動計算書の「" + name + "」の当期変動額合計が一致していません",
                     "当期変動額の合計", name + "の当期変動額合計", column + 8, list(range(column + 2, column + 8))))
        sums.append(("株主資本等変動計算書の「" + name + "」の当期末残高が一致していません",
                     "前期末残高と当期変動額合計の合計", name + "の当期末残高", column + 9, [column + 1, column + 8]))
    names = dict(EQUITY_COLUMNS)
    for total, parts in EQUITY_COLUMN_TOTALS:
        for row, row_name in EQUITY_ROWS:
            sums.append(("株主資本等変動計算書の「" + row_name + "」の" + names[total] + "が一致していません",
                         "・".join(names[p] for p in parts) + "の合計", names[total] + "（" + row_name + "）",
                         total + row, [p + row for p in parts]))
    items = master_codes()
    for lines, column in BALANCE_TO_EQUITY:
        label = "・".join(items[c] for c in lines)
        sums.append(("貸借対照表の「" + label + "」が株主資本等変動計算書の当期末残高と一致していません",
                     "貸借対照表の" + label, "株主資本等変動計算書の" + names[column] + "の当期末残高",
                     column + 9, lines))
    sums += [
        pl_route("当期純利益（当期純損失）", "経常利益", 177, [167, 170, -173, -175, -176]),
        pl_route("売上総利益（売上総損失）", "売上高合計と売上原価合計", 106, [103, -100]),
        pl_route("経常利益（経常損失）", "売上総利益", 167, [106, -131, 161, -166]),
        pl_route("税引前当期純利益（税引前当期純損失）", "営業利益", 174, [132, 161, -166, 170, -173]),
        ("損益計算書の当期純利益が株主資本等変動計算書と一致していません", "損益計算書の当期純利益",
         "株主資本等変動計算書の繰越利益剰余金の当期純利益", 696, [177]),
        bs_route("固定資産合計", "有形固定資産・無形固定資産・投資その他の資産の各科目", 46,
                 TANGIBLE + INTANGIBLE + INVESTMENTS),
        bs_route("資産合計", "流動資産合計・有形固定資産計・無形固定資産計・投資その他の資産計・繰延資産合計", 52,
                 [12, 30, 35, 45, 51]),
        bs_route("負債合計", "流動負債と固定負債の各科目", 73, CURRENT_LIABILITIES + FIXED_LIABILITIES),
        bs_route("純資産合計", "株主資本の各科目・評価・換算差額等合計・新株予約権", 93, [74, 75, 78, 80, 81, 82, 87, 88]),
        bs_route("負債純資産合計", "流動負債合計・固定負債合計・株主資本合計・評価・換算差額等合計・新株予約権", 94,
                 [65, 72, 83, 87, 88]),
    ]
    return sums


def individual_sums():
    return [
        bs_sum("流動資産合計", 12, [1, 2, 3, 4, 5, 6, 7, 8, 222, 11]),
        bs_sum("有形固定資産計", 228, [220, 221, 25, 26, 226]),
        bs_sum("固定資産合計", 46, [228, 225]),
        bs_sum("資産合計", 52, [12, 46]),
        bs_sum("流動負債合計", 65, [53, 54, 55, 56, 58, 59, 61, 227]),
        bs_sum("固定負債合計", 72, [67, 69, 71]),
        bs_sum("負債合計", 73, [65, 72]),
        bs_sum("純資産合計", 93, [230, 231, 232, 233]),
        bs_sum("負債純資産合計", 94, [73, 93]),
        pl_sum("売上高合計", 103, [101, 102]),
        pl_sum("売上原価合計", 100, [98, 99]),
        pl_sum("完成工事総利益（完成工事総損失）", 104, [101, -98]),
        pl_sum("兼業事業総利益（兼業事業総損失）", 105, [102, -99]),
        pl_sum("売上総利益（売上総損失）", 106, [104, 105]),
        pl_sum("販売費及び一般管理費計", 131, [c for c in SGA if c not in (110, 127)]),
        pl_sum("営業利益（営業損失）", 132, [106, -131]),
        pl_sum("営業外収益合計", 161, [159, 160]),
        pl_sum("営業外費用合計", 166, [162, 165]),
        pl_sum("経常利益（経常損失）", 167, [132, 161, -166]),
        pl_sum("特別利益合計", 170, [168, 169]),
        pl_sum("特別損失合計", 173, [171, 172]),
        pl_sum("事業主利益（事業主損失）", 234, [167, 170, -173]),
    ]


def write_rule_file(name, first, sums, items):
    text = ""
    for number, (title, sum_label, target_label, target, terms) in enumerate(sums, start=first):
        for code in [target] + [abs(t) for t in terms]:
            assert code in items, "%s: item %d is not in the item master" % (name, code)
        # Count and target end with a marker character, which the reader drops.
        text += ":A%d\r\n%s\r\n%s\r\n%s\r\n%d件,%d番\r\n%s\r\n" % (
            number, title, sum_label, target_label, len(terms), target, ",".join(str(t) for t in terms))
    with open(os.path.join(HERE, name), "wb") as f:
        f.write(text.encode("cp932"))
    return first + len(sums) - 1


# ---------------------------------------------------------------- tables

EDITIONS = ["2004-04-01", "2006-07-01", "2008-04-01"]
EDITIONS_06 = ["2006-07-01", "2008-04-01"]

# (title, left code, left text, right code, right text, SignNum, corporations, individuals, editions)
# Two items that must be equal and that a sum of the rule files already
# compares (完成工事原価 of the two statements, 当期純利益 and 純資産合計
# against the equity statement) are left to that sum.
RELATIONS = [
    ("資産合計と負債純資産合計が一致していません", 52, "資産合計", 94, "負債純資産合計", 0, 1, 1, EDITIONS_06),
    ("事業主利益が貸借対照表と損益計算書で一致していません", 233, "事業主利益（貸借対照表）", 234,
     "事業主利益（損益計算書）", 0, 0, 1, EDITIONS_06),
    ("売上高合計が入力されていません", 103, "売上高合計", 103, "売上高合計", 6, 1, 1, EDITIONS),
    ("兼業事業売上高と兼業事業売上原価は両方を入力してください", 102, "兼業事業売上高", 99, "兼業事業売上原価", 7, 1,
     1, EDITIONS),
    ("完成工事総利益が完成工事高を超えています", 101, "完成工事高", 104, "完成工事総利益（完成工事総損失）", 2, 1, 1,
     EDITIONS),
    ("流動資産合計が資産合計を超えています", 52, "資産合計", 12, "流動資産合計", 2, 1, 1, EDITIONS),
    ("販売費及び一般管理費が入力されていません", 131, "販売費及び一般管理費計", 131, "販売費及び一般管理費計", 6, 1, 1,
     EDITIONS),
]

# Names the agency cannot interpret: the lines a user adds under a heading
# and leaves with their default name.
INVALID_NAMES = ["その他１", "その他２", "その他３", "その他４", "その他５", "諸口"]
INVALID_DOCS = {1: [1, 2, 3], 2: [1, 2]}


def sql_text(value):
    return "'" + value.replace("'", "''") + "'"


def write_tables(items):
    lines = [
        "-- Rows of the statement checks' reference tables. Written by make_rules.py;",
        "-- edit the script and run it again instead of editing this file.",
        "",
    ]
    sort = 0
    for edition in EDITIONS:
        for title, left, left_text, right, right_text, sign, corp, indiv, editions in RELATIONS:
            if edition not in editions:
                continue
            assert left in items and right in items
            sort += 1
            lines.append(
                "INSERT INTO tblFSCheckMaster (TitleText, LeftItemNum, LeftItemText, RightItemNum, RightItemText, "
                "SignNum, TypeFlag_H, TypeFlag_K, EnforceDate, SortNumber) VALUES (%s, %d, %s, %d, %s, %d, %d, %d, '%s', %d);"
                % (sql_text(title), left, sql_text(left_text), right, sql_text(right_text), sign, corp, indiv,
                   edition, sort))
    lines.append("")
    for distinction, docs in INVALID_DOCS.items():
        for edition in EDITIONS:
            for doc in docs:
                for name in INVALID_NAMES:
                    lines.append(
                        "INSERT INTO tblFSInvalidItemList (Distinction, EnforceDate, DocCode, ItemName) "
                        "VALUES (%d, '%s', %d, %s);" % (distinction, edition, doc, sql_text(name)))
    with open(os.path.join(HERE, "schema", "50_check_rules.sql"), "w", encoding="utf-8", newline="\n") as f:
        f.write("\n".join(lines) + "\n")


def assert_one_finding_per_rule(sums, relations):
    """A fault that fails two rules must not show the same paragraph twice:
    every rule has its own title and labels, and no equality of two items is
    both a relation and a one-term sum."""
    seen = set()
    for title, sum_label, target_label, target, terms in sums:
        key = (title, sum_label, target_label)
        assert key not in seen, "two sums read alike: %s" % title
        seen.add(key)
    titles = {title for title, _, _, _, _ in sums}
    pairs = {frozenset((target, terms[0])) for _, _, _, target, terms in sums if len(terms) == 1 and terms[0] > 0}
    relation_titles = set()
    for title, left, _, right, _, sign, _, _, editions in relations:
        assert title not in titles, "a relation reads like a sum: %s" % title
        for edition in editions:
            assert (title, edition) not in relation_titles, "two relations read alike: %s" % title
            relation_titles.add((title, edition))
        assert sign != 0 or frozenset((left, right)) not in pairs, "a relation repeats a sum: %s" % title


def main():
    items = master_codes()
    corporations = corporation_sums()
    individuals = individual_sums()
    assert_one_finding_per_rule(corporations, RELATIONS)
    assert_one_finding_per_rule(individuals, RELATIONS)
    last = write_rule_file("DbtData0607H.txt", 400, corporations, items)
    assert last == 540, "corporation checks end at %d" % last
    last = write_rule_file("DbtData0607K.txt", 660, individuals, items)
    assert last == 681, "individual checks end at %d" % last
    write_tables(items)


if __name__ == "__main__":
    main()
