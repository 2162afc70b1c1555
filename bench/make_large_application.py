#!/usr/bin/env python3
"""Writes a large application for the benchmarks: the sample's application
data file beside a sibling database (Ledra.mdb) holding one corporation with
five fiscal periods, each with many item rows of which some are renamed, a
statement of changes in equity long enough for the side sheet, and thirteen
notes of about 600 CP932 bytes.

    make_large_application.py OUTPUT_FOLDER [--items N] [--renamed N]

The masters are the sample's (data/sample/10_item_master.sql) plus as many
extra detail items as the item count needs beyond the statements' own lines.
Amounts come from a fixed seed, so two runs write the same database. The
statements need not add up: the run under measurement builds payloads and
pages from whatever the rows hold.
"""

import argparse
import importlib.util
import random
import shutil
import sqlite3
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
DATA = ROOT / "data"

APPLY_DATA_ID = 1001  # ApplyDataID of the sample application file
SIBLING_KEY = 7
COMPANY = "（株）大雪総合建設"
NOTE_BYTES = 600
EXTRA_DOC_CODE = 7  # 附属明細表: where the extra detail items live
EXTRA_FIRST_CODE = 3001

# Five fiscal years, oldest first; the newest two follow the 2008-04 edition.
PERIODS = [
    dict(code=21, number=36, start="2004-04-01", end="2005-03-31", meeting="2005-06-28", sub=""),
    dict(code=22, number=37, start="2005-04-01", end="2006-03-31", meeting="2006-06-29", sub=""),
    dict(code=23, number=38, start="2006-04-01", end="2007-03-31", meeting="2007-06-28", sub=""),
    dict(code=24, number=39, start="2007-04-01", end="2008-03-31", meeting="2008-06-27", sub="200804"),
    dict(code=25, number=40, start="2008-04-01", end="2009-03-31", meeting="2009-06-26", sub="200804"),
]

# Fifteen rows: opening balance, a heading, twelve kinds of change, closing
# balance. ItemType 10 balance, 20 change, 30 heading, 40 total of changes.
EQUITY_ROWS = [(1, "前期末残高", 1, 10), (2, "当期変動額", 0, 30)] + [
    (3 + i, name, 2 + i, 20) for i, name in enumerate([
        "新株の発行", "剰余金の配当", "剰余金の配当に伴う利益準備金の積立", "別途積立金の積立",
        "別途積立金の取崩", "特別償却準備金の積立", "特別償却準備金の取崩", "圧縮積立金の積立",
        "当期純利益", "自己株式の取得",
        "株主資本以外の項目の当期変動額（純額）"])
] + [(14, "当期変動額合計", 13, 40), (15, "当期末残高", 14, 10)]

NOTE_PHRASES = [
    "有価証券の評価基準及び評価方法は、その他有価証券のうち時価のあるものについて決算日の市場価格等に基づく時価法によっている。",
    "たな卸資産の評価基準及び評価方法は、未成工事支出金について個別法による原価法、材料貯蔵品について最終仕入原価法によっている。",
    "固定資産の減価償却の方法は、有形固定資産について定率法、無形固定資産について定額法によっている。",
    "貸倒引当金は、債権の貸倒れによる損失に備えるため、一般債権については貸倒実績率により計上している。",
    "完成工事高の計上は、請負金額５０００万円以上かつ工期１年超の工事について工事進行基準によっている。",
]


def load_sample_module():
    found = importlib.util.spec_from_file_location("make_sample", DATA / "sample" / "make_sample.py")
    module = importlib.util.module_from_spec(found)
    found.loader.exec_module(module)
    return module


def note_text(index):
    """About NOTE_BYTES bytes of CP932 text in CR LF lines, different per note."""
    parts = []
    size = 0
    k = index
    while True:
        line = f"({len(parts) + 1}) " + NOTE_PHRASES[k % len(NOTE_PHRASES)]
        k += 1
        extra = len(line.encode("cp932")) + (2 if parts else 0)
        if size + extra > NOTE_BYTES:
            break
        parts.append(line)
        size += extra
    # Fill the rest with full-width text so every note ends near the bound.
    room = (NOTE_BYTES - size - 2) // 2
    if room > 0:
        filler = ("以上の注記は第" + str(index + 1) + "項に係るものである。") * 20
        parts.append(filler[:room])
    return "\r\n".join(parts)


def statement_items(db):
    return db.execute(
        "SELECT ItemCode, ItemName, DocCode, SortNumber_H FROM M_FSItem"
        " WHERE SortNumber_H IS NOT NULL AND DocCode IN (1, 2, 3) ORDER BY DocCode, SortNumber_H"
    ).fetchall()


def add_extra_items(db, count):
    """Detail items beyond the statements' lines, sorted after every other item."""
    (top,) = db.execute("SELECT Max(SortNumber_H) FROM M_FSItem").fetchone()
    rows = []
    for i in range(count):
        code = EXTRA_FIRST_CODE + i
        rows.append((code, f"明細科目{i + 1:04d}", EXTRA_DOC_CODE, "附属明細表", "明細",
                     "NV", "NV", "NV", top + 10 * (i + 1), None, None, 1,
                     "20040401,20060701,20080401"))
    db.executemany("INSERT INTO M_FSItem VALUES (?,?,?,?,?,?,?,?,?,?,?,?,?)", rows)
    return [(r[0], r[1], r[2], r[8]) for r in rows]


def write_period(db, sample, period, items, renamed, rng, first_row_id):
    code = period["code"]
    db.execute(
        "INSERT INTO T_FS (FSDataCode, MainDataCode, FYearNumber, FYearFrom, FYearTo, ApplyerName,"
        " Distinction, TaxType, TaxFreeFlag, UnitType, CloseAccountType, SideBusinessFlag, MeetingDate,"
        " EnforceDate, EnforceDatesub, VersionNumber, OtherSoftPrefCode, CapitalSubFlag, NoteTrustDebt,"
        " NoteReceiptBillDiscount, NoteReceiptBillGive, AccumulatedDepreciation)"
        " VALUES (?,?,?,?,?,?,1,2,0,1,0,1,?,'2006-07-01',?,'2.1.0',0,1,?,?,?,?)",
        (code, SIBLING_KEY, period["number"], period["start"], period["end"], COMPANY,
         period["meeting"], period["sub"], 5_000_000, 12_600_000, 3_150_000, 21_026_150))

    renamed_every = max(1, len(items) // max(1, renamed))
    rows = []
    for n, (item_code, name, doc, sort) in enumerate(items):
        is_renamed = n % renamed_every == 0 and n // renamed_every < renamed
        amount = rng.randrange(1_000, 900_000_000) * (-1 if rng.random() < 0.1 else 1)
        rows.append((first_row_id + n, code, item_code, item_code,
                     f"{name}（変更{n // renamed_every + 1}）" if is_renamed else name,
                     amount, 1 if is_renamed else 0, doc, sort))
    db.executemany("INSERT INTO P_FSItemData VALUES (?,?,?,?,?,?,?,?,?)", rows)

    notes = [note_text(i + code) for i in range(len(sample.NOTE_COLUMNS))]
    db.execute(f"INSERT INTO T_FSNote (FSDataCode, {', '.join(sample.NOTE_COLUMNS)}) VALUES"
               f" ({', '.join('?' * (len(notes) + 1))})", [code] + notes)

    db.executemany(
        "INSERT INTO T_FSCapitalCol (FSDataCode, ColNo, ColName, ColIndex, GridIndex, ItemCode,"
        " CapitalHeader) VALUES (?,?,?,?,?,?,?)",
        [(code, no, name, no - 1, no, col_code, header)
         for no, (col_code, _, name, header) in enumerate(sample.CAPITAL_COLUMNS, 1)])

    fields = sample.ROW_FIELDS
    capital_rows = []
    for row_no, row_name, row_code, row_type in EQUITY_ROWS:
        amounts = [None if row_type == 30 or field == "CapitalData"
                   else rng.randrange(-50_000_000, 500_000_000) for field in fields]
        capital_rows.append([code, row_no, row_name, row_code, row_type] + amounts)
    db.executemany(
        f"INSERT INTO T_FSCapitalRow (FSDataCode, RowNo, RowName, ItemCode, ItemType, {', '.join(fields)})"
        f" VALUES ({', '.join('?' * (5 + len(fields)))})", capital_rows)

    db.executemany(
        "INSERT INTO T_FSItemDetail (FSDataCode, FSItemID, FSItemDetailID, DataText) VALUES (?,?,?,?)",
        [(code, 89, 234, "特別償却準備金"), (code, 90, 235, "圧縮積立金")])
    return first_row_id + len(items)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("output", type=Path)
    parser.add_argument("--items", type=int, default=600, help="item rows per period")
    parser.add_argument("--renamed", type=int, default=17, help="renamed item rows per period")
    args = parser.parse_args()

    sample = load_sample_module()
    args.output.mkdir(parents=True, exist_ok=True)
    target = args.output / "Ledra.mdb"
    partial = args.output / "Ledra.mdb.partial"
    partial.unlink(missing_ok=True)

    db = sqlite3.connect(partial)
    db.executescript((DATA / "ledra" / "sibling_tables.sql").read_text(encoding="utf-8"))
    db.executescript((DATA / "sample" / "10_item_master.sql").read_text(encoding="utf-8"))
    items = statement_items(db)
    if args.items > len(items):
        items += add_extra_items(db, args.items - len(items))
    items = items[:args.items]

    db.execute("INSERT INTO T_MainData VALUES (?,?,?)", (SIBLING_KEY, APPLY_DATA_ID, COMPANY))
    rng = random.Random(20090715)
    row_id = 1
    for period in PERIODS:
        row_id = write_period(db, sample, period, items, args.renamed, rng, row_id)
    db.commit()
    db.close()
    partial.replace(target)
    shutil.copyfile(DATA / "sample" / "app.dat", args.output / "app.dat")
    print(f"{target}: {len(PERIODS)} periods, {len(items)} items and {args.renamed} renamed each")


if __name__ == "__main__":
    main()
