// The statement checks. Each operation traps its own failures: a broken
// check is reported as a problem text and the next check still runs, so the
// user never mistakes a check that could not run for a pass.
#include "checks/clsVerifyFSData.h"

#include "checks/RuleFile.h"
#include "checks/RuleFileEnd.h"
#include "checks/ValueLines.h"
#include "db/mdlFunctionDatabase.h"
#include "platform/SequentialInput.h"
#include "platform/VbError.h"
#include "platform/VbFormat.h"
#include "startup/mdlFunctionApplication.h"
#include "startup/mdlFunctionStandard.h"

#include <cstdlib>
#include <optional>

namespace kelvary {
namespace {

const QString kCrLf = QStringLiteral("\r\n");
const QString kParagraphEnd = kCrLf + kCrLf;

bool isTrue(const Variant& value) { return !value.isNull() && !value.isEmpty() && value.toBool(); }

std::int32_t longOr(const Variant& value, std::int32_t fallback) {
    return value.isNull() || value.isEmpty() ? fallback : value.toLong();
}

bool nullOrEmpty(const Variant& value) { return value.isNull() || value.text().isEmpty(); }

// An item's amount as the checks use it: thousands of yen, truncated toward zero.
Currency thousands(const Variant& itemValue) {
    Variant converted = itemValue;
    gvarConvUnitType(converted);
    return converted.toCurrency();
}

QString amountLine(const QString& itemText, const Currency& amount) {
    return valueLine(QStringLiteral("　「") + itemText + QStringLiteral("」の金額："), Variant(amount));
}

QString missingLine(const QString& itemText) {
    return QStringLiteral("　「") + itemText + QStringLiteral("」：未入力") + kCrLf;
}

// A path level is left out when it is Null or its name begins with NV (no such level).
QString pathLevel(const Variant& level) {
    if (level.isNull() || level.text().left(2) == QStringLiteral("NV")) return QString();
    return QStringLiteral("→") + level.text();
}

}  // namespace

clsVerifyFSData::clsVerifyFSData() {
    mItemTotals.resize(static_cast<std::size_t>(std::max<std::int32_t>(mGetItemMax(), 0)) + 1);
}

std::int32_t clsVerifyFSData::mGetItemMax() {
    return glngGetMaxValue(QStringLiteral("ItemCode"), QStringLiteral("M_FSItem"), QString());
}

void clsVerifyFSData::setFSDataCode(std::int32_t code) {
    mlngFSDataCode = code;
    mvarEnforceDate = gvarGetData(QStringLiteral("EnforceDate"), QStringLiteral("tmpFSInfoData"),
                                  QStringLiteral("FSDataCode=") + QString::number(code), Variant::null());
}

void clsVerifyFSData::mAppend(const QString& problem) { mstrMessage += problem + kParagraphEnd; }

void clsVerifyFSData::mAppendProgramError(const QString& place) {
    mstrMessage += QStringLiteral("■プログラムのエラーが発生しました。(場所:") + place + QStringLiteral(")") + kCrLf +
                   QStringLiteral("　データファイルが更新されていない可能性があります。ノルデバンを実行してください。") +
                   kParagraphEnd;
    mblnErrorFlag = true;
}

QString clsVerifyFSData::mstrCondition() const { return QStringLiteral("FSDataCode=") + QString::number(mlngFSDataCode); }

QString clsVerifyFSData::mstrSortColumn() const {
    switch (mlngDistinction) {
    case 1: return QStringLiteral("SortNumber_H");
    case 2: return QStringLiteral("SortNumber_K");
    default: return QStringLiteral("SortNumber_R");
    }
}

QString clsVerifyFSData::mstrEditionDigits() const { return mvarEnforceDate.text().remove(QLatin1Char('/')); }

const clsVerifyFSData::ItemTotal& clsVerifyFSData::total(std::int32_t code) const {
    static const ItemTotal kAbsent;
    if (code < 0 || static_cast<std::size_t>(code) >= mItemTotals.size()) return kAbsent;
    return mItemTotals[static_cast<std::size_t>(code)];
}

// Every check below traps its own errors.
void clsVerifyFSData::CheckItemSum() {
    mMdbToDimension();
    mCheckItemHeader();
    if (!mblnExists) return;
    mCheckInvalidItem();
    mCheckMinusItem();
    mCheckPlusItem();
    mCheckItemMatch();
    int first = 0;
    int last = -1;
    QString file;
    if (mlngDistinction == 1) {
        first = 400;
        last = 540;
        file = QStringLiteral("DbtData0607H.txt");
    } else if (mlngDistinction == 2) {
        first = 660;
        last = 681;
        file = QStringLiteral("DbtData0607K.txt");
    }
    if (file.isEmpty()) return;
    // A rule file that cannot be read, or that was cut short, is reported
    // once for the statement instead of once for every check it lacks.
    const QString path = gstrProgramInfo(0) + file;
    int cutOff = 0;  // the first check the file lacks; 0 when it lacks none
    const auto place = [&] {
        return QStringLiteral("gblnCheckItemSum") + kCrLf + QStringLiteral("Code=A") +
               QString::number(cutOff != 0 ? cutOff : first);
    };
    const TrapEnd read = trapped(place, 1, [&] {
        cutOff = firstRuleCutOff(path, first, last).value_or(0);
        if (cutOff != 0)
            throw VbError(vberr::InputPastEnd, QStringLiteral("ファイル「") + path +
                                                   QStringLiteral("」は途中で切れています。項番 ") +
                                                   QString::number(cutOff) + QStringLiteral(" から ") +
                                                   QString::number(last) + QStringLiteral(" の検査ができません。"));
    });
    if (!read) {
        mAppendProgramError(QStringLiteral("gblnCheckItemSum"));
        if (cutOff == 0) return;
    }
    const int lastHeld = cutOff != 0 ? cutOff - 1 : last;
    for (int k = first; k <= lastHeld; ++k) gblnCheckItemSum(k, file);
}

// Several rows may carry one code (the equity cells, split lines); their
// truncated amounts add up, and the row count is the tolerance of a sum.
void clsVerifyFSData::mMdbToDimension() {
    trapped(QStringLiteral("mMdbToDimension"), 0, [&] {
        Recordset rs = gobjMakeRecordset(QStringLiteral(" Select * From tmpFSItemData ") + QStringLiteral(" Where ") +
                                         mstrCondition() + QStringLiteral(" Order By SortNumber"));
        for (; !rs.eof(); rs.moveNext()) {
            const Variant& value = rs[QStringLiteral("ItemValue")];
            if (value.isNull()) continue;
            const std::int32_t code = rs[QStringLiteral("ItemCode")].toLong();
            if (code < 0) continue;
            // Codes beyond the item master (equity cells, later additions) still count.
            if (static_cast<std::size_t>(code) >= mItemTotals.size()) mItemTotals.resize(static_cast<std::size_t>(code) + 1);
            ItemTotal& entry = mItemTotals[static_cast<std::size_t>(code)];
            entry.amount.scaled += thousands(value).scaled;
            entry.present = true;
            ++entry.rows;
        }
    });
}

void clsVerifyFSData::mCheckItemHeader() {
    bool failed = false;
    const TrapEnd checked = trapped(QStringLiteral("mCheckItemHeader"), 0, [&] {
        const Recordset rs = gobjMakeRecordset(QStringLiteral(" Select * From tmpFSInfoData ") + QStringLiteral(" Where ") +
                                               mstrCondition());
        if (rs.eof()) {
            mblnExists = false;
            mAppend(QStringLiteral("■選択された決算期の財務諸表は存在しません"));
            mblnErrorFlag = true;
            return;
        }
        auto fail = [&](const QString& text) {
            mAppend(text);
            failed = true;
        };
        if (nullOrEmpty(rs[QStringLiteral("ApplyerName")])) fail(QStringLiteral("■基本情報の「商号又は名称」が入力されていません。"));
        if (nullOrEmpty(rs[QStringLiteral("FYearNumber")])) fail(QStringLiteral("■基本情報の「決算期」が入力されていません。"));
        const Variant& from = rs[QStringLiteral("FYearFrom")];
        const Variant& to = rs[QStringLiteral("FYearTo")];
        if (from.isNull() || to.isNull()) {
            fail(QStringLiteral("■基本情報の「決算期間」が設定されていません。"));
        } else if (from.toDate().date.daysTo(to.toDate().date) < 0) {
            fail(QStringLiteral("■基本情報の「決算期間」の「自」又は「至」の日付が正しく設定されていません。"));
        } else {
            if (gstrEraChar(from) != QStringLiteral("H")) fail(QStringLiteral("■基本情報の「決算期間」の自の元号が平成ではありません"));
            if (gstrEraChar(to) != QStringLiteral("H")) fail(QStringLiteral("■基本情報の「決算期間」の至の元号が平成ではありません"));
        }
        const std::int32_t taxType = longOr(rs[QStringLiteral("TaxType")], -1);
        if (taxType <= 0) fail(QStringLiteral("■基本情報の「税処理」が未設定です"));
        if (taxType == 1 && !isTrue(rs[QStringLiteral("TaxFreeFlag")]))
            fail(QStringLiteral("■基本情報の「税処理」が「消費税込み」となっています（※免税事業者のみ選択可能です）"));
        if (taxType == 3 && longOr(rs[QStringLiteral("CloseAccountType")], 0) == 1)
            fail(QStringLiteral("■基本情報の「税処理」が不正です") + kParagraphEnd +
                 QStringLiteral("　（※免税事業者の税込財務諸表は、「税処理」＝税込み、「免税事業者である」＝チェック有、に設定します）"));
        if (taxType >= 4) fail(QStringLiteral("■基本情報の「税処理」が不正です"));

        const bool edition2004 = !mvarEnforceDate.isNull() && mvarEnforceDate.toDate().date == QDate(2004, 4, 1);
        const std::int32_t distinction = longOr(rs[QStringLiteral("Distinction")], 0);
        if (edition2004 && distinction == 1) {
            const Variant& meeting = rs[QStringLiteral("MeetingDate")];
            if (nullOrEmpty(meeting)) {
                fail(QStringLiteral("■基本情報の「決算確定の日」が入力されていません。"));
            } else if (gstrEraChar(meeting) != QStringLiteral("H")) {
                fail(QStringLiteral("■基本情報の「決算確定の日」の元号が平成ではありません"));
            }
        }
        if (edition2004 && distinction != 1 && distinction != 2)
            fail(QStringLiteral("■基本情報の「法人／個人の区分」が設定されていません。"));

        auto itemValue = [&](int code) {
            const Variant v = gvarGetData(QStringLiteral("ItemValue"), QStringLiteral("tmpFSItemData"),
                                          QStringLiteral("(") + mstrCondition() + QStringLiteral(") AND (ItemCode=") +
                                              QString::number(code) + QStringLiteral(")"),
                                          Variant(0));
            return v.isNull() || v.isEmpty() ? 0.0 : v.toDouble();
        };
        if ((itemValue(102) > 0 || itemValue(99) > 0) && !isTrue(rs[QStringLiteral("SideBusinessFlag")]))
            fail(QStringLiteral("■基本情報の「兼業事業売上原価報告書を印刷する」がチェックされていません") + kParagraphEnd +
                 QStringLiteral("　（※「兼業事業売上高」「兼業事業売上原価」が計上されている為、添付する必要があります）"));
        mblnErrorFlag = mblnErrorFlag || failed;
    });
    if (!checked) mAppendProgramError(QStringLiteral("mCheckItemHeader"));
}

void clsVerifyFSData::mCheckMinusItem() { mCheckSign(false); }
void clsVerifyFSData::mCheckPlusItem() { mCheckSign(true); }

// Both sign checks: an item of type 0 must not be negative, one of type 2
// not positive. Codes of 10000 and above are not items of the statements.
void clsVerifyFSData::mCheckSign(bool plusCheck) {
    const QString place = plusCheck ? QStringLiteral("mCheckPlusItem") : QStringLiteral("mCheckMinusItem");
    const TrapEnd checked = trapped(place, 1, [&] {
        const QString sql =
            QStringLiteral(" Select tmpFSItemData.FSDataCode as FSDataCode, ") +
            QStringLiteral(" tmpFSItemData.ItemValue as ItemValue,") + QStringLiteral(" tmpFSItemData.ItemCode as ItemCode, ") +
            QStringLiteral(" tmpFSItemData.ItemName as ItemName, ") +
            (plusCheck ? QStringLiteral(" M_FSItem.EnforceDates as EnforceDate,") : QString()) +
            QStringLiteral(" M_FSItem.DocName as DocName") + QStringLiteral(" From M_FSItem Inner Join tmpFSItemData") +
            QStringLiteral(" On (M_FSItem.ItemCode = tmpFSItemData.ItemCode ") +
            (plusCheck ? QStringLiteral(" AND IsNull(M_FSItem.") : QStringLiteral(" AND isnull(M_FSItem.")) +
            mstrSortColumn() + QStringLiteral(") = False)") + QStringLiteral(" Where ") + QStringLiteral(" (") + mstrCondition() +
            QStringLiteral(") ") + (plusCheck ? QStringLiteral(" AND (ItemValue>0) ") : QStringLiteral(" AND (ItemValue<0) ")) +
            (plusCheck ? QStringLiteral(" AND (M_FSItem.ItemValueType=2)") : QStringLiteral(" AND (M_FSItem.ItemValueType=0)")) +
            QStringLiteral(" AND (M_FSItem.EnforceDates Like '%") + mstrEditionDigits() + QStringLiteral("%')") +
            QStringLiteral(" And (tmpFSItemData.ItemCode<10000)") + QStringLiteral(" Order By SortNumber");
        Recordset rs = gobjMakeRecordset(sql);
        QString list;
        for (; !rs.eof(); rs.moveNext()) {
            const Variant& value = rs[QStringLiteral("ItemValue")];
            if (value.isNull()) continue;
            list += valueLine(QStringLiteral("　") + rs[QStringLiteral("DocName")].text() + QStringLiteral("→") +
                                  rs[QStringLiteral("ItemName")].text() + QStringLiteral("："),
                              Variant(thousands(value)));
        }
        if (list.isEmpty()) return;
        const QString title = plusCheck
                                  ? QStringLiteral("■本来０又はマイナスの金額であるべき科目に、プラスの金額が入力されています。")
                                  : QStringLiteral("■本来プラスの金額であるべき科目に、０又はマイナスの金額が入力されています。");
        mstrMessage += titleLine(title) + kCrLf + list + kParagraphEnd;
        mblnErrorFlag = true;
    });
    if (!checked) mAppendProgramError(place);
}

void clsVerifyFSData::mCheckItemMatch() {
    const TrapEnd checked = trapped(QStringLiteral("mCheckItemMatch"), 0, [&] {
        if (mlngDistinction != 1 && mlngDistinction != 2) return;
        const QString flagColumn = mlngDistinction == 1 ? QStringLiteral("TypeFlag_H") : QStringLiteral("TypeFlag_K");
        Recordset rs = gobjMakeRecordset(QStringLiteral(" Select * From tblFSCheckMaster ") + QStringLiteral(" Where (") +
                                         flagColumn + QStringLiteral("=True)") + QStringLiteral(" And (EnforceDate=#") +
                                         vbFormat(mvarEnforceDate, QStringLiteral("yyyy/mm/dd")) + QStringLiteral("#)") +
                                         QStringLiteral(" Order By SortNumber"));
        bool failed = false;
        for (; !rs.eof(); rs.moveNext()) {
            const ItemTotal& left = total(rs[QStringLiteral("LeftItemNum")].toLong());
            const ItemTotal& right = total(rs[QStringLiteral("RightItemNum")].toLong());
            const QString leftText = rs[QStringLiteral("LeftItemText")].text();
            const QString rightText = rs[QStringLiteral("RightItemText")].text();
            const std::int64_t l = left.amount.scaled;
            const std::int64_t r = right.amount.scaled;
            bool passes = true;
            QString lines = amountLine(leftText, left.amount) + amountLine(rightText, right.amount);
            switch (longOr(rs[QStringLiteral("SignNum")], -1)) {
            case 0: passes = l == r; break;
            case 1: passes = l != r; break;
            case 2: passes = l >= r; break;
            case 3: passes = l <= r; break;
            case 4: passes = l > r; break;
            case 5: passes = l < r; break;
            case 6:
                passes = left.present;
                lines = missingLine(leftText);
                break;
            case 7:
                passes = left.present == right.present;
                lines = (left.present ? amountLine(leftText, left.amount) : missingLine(leftText)) +
                        (right.present ? amountLine(rightText, right.amount) : missingLine(rightText));
                break;
            case 8: passes = !(l != 0 && r != 0); break;
            default: break;
            }
            if (passes) continue;
            mstrMessage += titleLine(QStringLiteral("■") + rs[QStringLiteral("TitleText")].text()) + kCrLf + lines +
                           kParagraphEnd;
            failed = true;
        }
        mblnErrorFlag = mblnErrorFlag || failed;
    });
    if (!checked) mAppendProgramError(QStringLiteral("mCheckItemMatch"));
}

// Moves the file to the line after the record's header; false (reported)
// when the file has no such record.
bool clsVerifyFSData::mFileRestore(SequentialInput& file, const QString& key) {
    return trapped(QStringLiteral("mFileRestore"), 1, false, [&] {
        seekSumRule(file, key);
        return true;
    });
}

bool clsVerifyFSData::gblnCheckItemSum(int checkNumber, const QString& fileName) {
    const QString key = QStringLiteral("A") + QString::number(checkNumber);
    const auto check = [&]() -> bool {
        SequentialInput file(gstrProgramInfo(0) + fileName);
        if (!mFileRestore(file, key)) {
            mAppendProgramError(QStringLiteral("gblnCheckItemSum"));
            return false;
        }
        const SumRule rule = readSumRule(file);
        std::int64_t sum = 0;
        std::int64_t tolerance = 0;
        for (const std::int32_t term : rule.terms) {
            const ItemTotal& item = total(static_cast<std::int32_t>(std::abs(static_cast<long>(term))));
            if (!item.present) continue;
            sum += term < 0 ? -item.amount.scaled : item.amount.scaled;
            tolerance += item.rows * 10000;
        }
        if (rule.cutShort) {
            const long lastCode = rule.terms.empty() ? rule.target : std::abs(static_cast<long>(rule.terms.back()));
            gMsgbox(3, QStringLiteral("ファイルの終端に達しました") + kCrLf + QStringLiteral("項番：") +
                           QString::number(checkNumber) + kCrLf + QStringLiteral("科目：") + QString::number(lastCode));
        }
        const std::int32_t target = rule.target;
        const std::int64_t targetAmount = total(target).amount.scaled;
        if (sum - tolerance <= targetAmount && sum + tolerance >= targetAmount) return true;

        mstrMessage += titleLine(QStringLiteral("■") + rule.title) + kCrLf +
                       valueLine(QStringLiteral("　") + rule.sumLabel + QStringLiteral("："), Variant(Currency{sum})) +
                       valueLine(QStringLiteral("　") + rule.targetLabel + QStringLiteral("："), Variant(Currency{targetAmount})) +
                       valueLine(QStringLiteral("　差額："), Variant(Currency{sum - targetAmount})) + kCrLf + kCrLf;
        mblnErrorFlag = true;
        return false;
    };
    // A check that fails to run does not hold.
    bool holds = false;
    const auto place = [&] { return QStringLiteral("gblnCheckItemSum") + kCrLf + QStringLiteral("Code=") + key; };
    if (!trapped(place, 1, [&] { holds = check(); })) mAppendProgramError(QStringLiteral("gblnCheckItemSum"));
    return holds;
}

void clsVerifyFSData::mCheckInvalidItem() {
    const TrapEnd checked = trapped(QStringLiteral("mCheckInvalidItem"), 1, [&] {
        Recordset names = gobjMakeRecordset(QStringLiteral(" Select *") + QStringLiteral(" From tblFSInvalidItemList ") +
                                            QStringLiteral(" Where (Distinction=") + QString::number(mlngDistinction) +
                                            QStringLiteral(")") + QStringLiteral(" And (EnforceDate=#") +
                                            vbFormat(mvarEnforceDate, QStringLiteral("yyyy/mm/dd")) + QStringLiteral("#)"));
        QStringList conditions;
        for (; !names.eof(); names.moveNext()) {
            conditions << QStringLiteral("(tmpFSItemData.DocCode=") + names[QStringLiteral("DocCode")].text() +
                              QStringLiteral(" AND tmpFSItemData.ItemName='") + names[QStringLiteral("ItemName")].text() +
                              QStringLiteral("')");
        }
        if (conditions.isEmpty()) return;
        // The 2008 statements name their documents as the 2006 ones do.
        QString docTable = gstrFSDocMaster(mvarEnforceDate);
        if (docTable.isEmpty()) docTable = QStringLiteral("tblFSDocMaster06");
        Recordset rs = gobjMakeRecordset(
            QStringLiteral("SELECT ") + docTable + QStringLiteral(".DocName, ") + QStringLiteral("M_FSItem.SectionName, ") +
            QStringLiteral("M_FSItem.Segment1Name, ") + QStringLiteral("M_FSItem.Segment2Name, ") +
            QStringLiteral("M_FSItem.Segment3Name, ") + QStringLiteral("tmpFSItemData.ItemName, ") +
            QStringLiteral("tmpFSItemData.FSDataCode ") +
            QStringLiteral(" FROM (tmpFSItemData INNER JOIN M_FSItem ON tmpFSItemData.ItemCode = M_FSItem.ItemCode) ") +
            QStringLiteral("INNER JOIN ") + docTable + QStringLiteral(" ON M_FSItem.DocCode = ") + docTable +
            QStringLiteral(".DocCode ") + QStringLiteral(" WHERE (tmpFSItemData.FSDataCode=") + QString::number(mlngFSDataCode) +
            QStringLiteral(") AND ") + QStringLiteral("(") + conditions.join(QStringLiteral(" OR ")) + QStringLiteral(")") +
            QStringLiteral(" AND (IsNull(M_FSItem.") + mstrSortColumn() + QStringLiteral(")=False)") +
            QStringLiteral(" Order By tmpFSItemData.SortNumber"));
        if (rs.eof()) return;
        mstrMessage += QStringLiteral("■分析を行う上で不適切な科目名があります") + kParagraphEnd +
                       QStringLiteral("　以下に印刷されている各科目名がどのような性格を持ったものか判断できる科目名に変更して下さい。") + kCrLf +
                       QStringLiteral("　（例：貸借対照表→資産の部→無形固定資産→その他１ 　　⇒ ソフトウェア") + kCrLf +
                       QStringLiteral("　　　　貸借対照表→資産の部→投資その他の資産→その他１ ⇒ 　保険積立金）") + kParagraphEnd;
        const bool after2004 = !mvarEnforceDate.isNull() && mvarEnforceDate.toDate().date > QDate(2004, 4, 1);
        for (; !rs.eof(); rs.moveNext()) {
            QString line = QStringLiteral("　・") + rs[QStringLiteral("DocName")].text() + pathLevel(rs[QStringLiteral("SectionName")]) +
                           pathLevel(rs[QStringLiteral("Segment1Name")]) + pathLevel(rs[QStringLiteral("Segment2Name")]);
            if (after2004) line += pathLevel(rs[QStringLiteral("Segment3Name")]);
            mstrMessage += line + QStringLiteral("→") + rs[QStringLiteral("ItemName")].text() + kCrLf;
        }
        mblnErrorFlag = true;
        mstrMessage += kCrLf;
    });
    if (!checked) mAppendProgramError(QStringLiteral("mCheckInvalidItem"));
}

}  // namespace kelvary
