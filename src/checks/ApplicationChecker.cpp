// The application rules. Each rule appends its own problem paragraph and says
// whether it failed; mCheckAPData runs them in the fixed order users know the
// list in, so the order of the calls below is part of the output.
#include "checks/ApplicationChecker.h"

#include "db/mdlFunctionDatabase.h"
#include "platform/StrConv.h"
#include "startup/mdlFunctionApplication.h"
#include "startup/mdlFunctionStandard.h"

#include <array>

namespace kelvary {
namespace {

const QString kCrLf = QStringLiteral("\r\n");
const QString kMissing = QStringLiteral("が未入力（又は未設定）です");
const QString kSpace = QStringLiteral(" ");

constexpr QChar kWideSpace(u'\u3000');

// VB's Trim: half-width spaces only.
QString trimSpaces(const QString& text) {
    qsizetype first = 0;
    qsizetype last = text.size();
    while (first < last && text[first] == QLatin1Char(' ')) ++first;
    while (last > first && text[last - 1] == QLatin1Char(' ')) --last;
    return text.mid(first, last - first);
}

// Blanks at either end, half-width or the full-width (ideographic) space an
// input method types: a field of nothing else is not filled in.
QString trimBlanks(const QString& text) {
    const auto blank = [](QChar c) { return c == QLatin1Char(' ') || c == kWideSpace; };
    qsizetype first = 0;
    qsizetype last = text.size();
    while (first < last && blank(text[first])) ++first;
    while (last > first && blank(text[last - 1])) --last;
    return text.mid(first, last - first);
}

QString title(const QString& fieldName) { return QStringLiteral("■申請書の「") + fieldName + QStringLiteral("」"); }

// A blank is typed: the empty text stands for every empty or all-space text,
// a number only for itself. A date never equals a blank, so a date column is
// missing only when it is Null.
bool equalsBlank(const Variant& value, const Variant& blank) {
    if (blank.isString()) return (value.isString() || value.isEmpty()) && trimBlanks(value.text()).isEmpty();
    if (!blank.isNumber()) return false;
    double number = 0;
    if (value.isNumber()) return value.toDouble() == blank.toDouble();
    if (value.isString() && vbParseNumber(value.text(), number)) return number == blank.toDouble();
    return false;
}

bool isLong(const Variant& value, std::int32_t wanted) {
    return !value.isNull() && !value.isEmpty() && value.toLong() == wanted;
}

struct CorporateForm {
    const char* fullName;
    const char* abbreviation;
    const char* symbol;  // empty when the form has none
};

const std::array<CorporateForm, 8> kCorporateForms{{
    {"株式会社", "（株）", "㈱"},
    {"有限会社", "（有）", "㈲"},
    {"合資会社", "（資）", ""},
    {"合名会社", "（名）", ""},
    {"協同組合", "（同）", ""},
    {"協業組合", "（業）", ""},
    {"企業組合", "（企）", ""},
    {"合同会社", "（合）", ""},
}};

const std::array<const char*, 3> kYearNames{
    "審査対象事業年度（当年度）", "審査対象事業年度（前年度）", "審査対象事業年度（前々年度）"};

}  // namespace

void ApplicationChecker::CheckItemSum() { mCheckAPData(); }

void ApplicationChecker::mAppend(const QString& problem) { mstrMessage += problem + kCrLf + kCrLf; }

bool ApplicationChecker::mblnCheckBlank(const QString& field, const QString& titleText, const Recordset& rs,
                                        const Variant& blank) {
    const Variant& value = rs[field];
    if (!value.isNull() && !blank.isNull() && !equalsBlank(value, blank)) return false;
    mAppend(titleText + kMissing);
    return true;
}

bool ApplicationChecker::mblnCheckEra(const Variant& value, const QString& fieldName) {
    if (value.isNull() || gstrEraChar(value) == QStringLiteral("H")) return false;
    mAppend(title(fieldName) + QStringLiteral("の元号が平成ではありません"));
    return true;
}

bool ApplicationChecker::mblnCheckTooLong(const Recordset& rs, const QString& field, const QString& titleText,
                                          int limit) {
    const Variant& value = rs[field];
    if (value.isNull() || trimBlanks(value.text()).size() <= limit) return false;
    const QString digits = limit == 2 ? QStringLiteral("２") : limit == 5 ? QStringLiteral("５") : QStringLiteral("６");
    mAppend(titleText + QStringLiteral("が") + digits + QStringLiteral("桁を超えています"));
    return true;
}

// Rules 1-3. The address is not trimmed here: its characters are counted as given.
bool ApplicationChecker::mblnCheckAddress(const Recordset& rs) {
    const QString field = QStringLiteral("ApplierColumnAddress");
    const QString titleText = title(QStringLiteral("申請者欄の住所"));
    bool failed = mblnCheckBlank(field, titleText, rs, Variant(QString()));
    const Variant& value = rs[field];
    if (value.isNull() || value.text().isEmpty()) return failed;
    const QString address = value.text();
    if (address.size() < 4) {
        mAppend(titleText + QStringLiteral("が不正です"));
        return true;
    }
    static const QString kPrefectureEnds = QStringLiteral("都道府県");
    if (!kPrefectureEnds.contains(address[2]) && address[3] != QChar(u'県')) {
        mAppend(titleText + QStringLiteral("が都道府県から入力されていません"));
        failed = true;
    }
    return failed;
}

// Rules 7-14 for the licence now (1) and 15-22 for the previous one (2).
bool ApplicationChecker::mblnCheckLicence(const Recordset& rs, int number, const QString& prefix) {
    const QString n = QString::number(number);
    bool failed = false;
    failed |= mblnCheckBlank(QStringLiteral("PrefCode") + n, title(prefix + QStringLiteral("の大臣・知事の区分")), rs,
                             Variant(-1));
    failed |= mblnCheckBlank(QStringLiteral("ClasCtgr") + n, title(prefix + QStringLiteral("の般特の区分")), rs,
                             Variant(0));
    const QString leftTitle = title(prefix + QStringLiteral("の許可番号（左側２桁）"));
    failed |= mblnCheckBlank(QStringLiteral("LcnsNum") + n + QStringLiteral("A"), leftTitle, rs, Variant(QString()));
    failed |= mblnCheckTooLong(rs, QStringLiteral("LcnsNum") + n + QStringLiteral("A"), leftTitle, 2);
    const QString rightTitle = title(prefix + QStringLiteral("の許可番号（右側６桁）"));
    failed |= mblnCheckBlank(QStringLiteral("LcnsNum") + n + QStringLiteral("B"), rightTitle, rs, Variant(QString()));
    failed |= mblnCheckTooLong(rs, QStringLiteral("LcnsNum") + n + QStringLiteral("B"), rightTitle, 6);
    const QString dateField = QStringLiteral("LcnsDate") + n;
    failed |= mblnCheckBlank(dateField, title(prefix + QStringLiteral("の許可年月日")), rs, Variant(0));
    failed |= mblnCheckEra(rs[dateField], prefix + QStringLiteral("の許可年月日"));
    return failed;
}

// The previous licence is optional; any one of its entries makes all of it required.
bool ApplicationChecker::mblnPreviousLicenceGiven(const Recordset& rs) const {
    const Variant& clas = rs[QStringLiteral("ClasCtgr2")];
    const Variant& left = rs[QStringLiteral("LcnsNum2A")];
    const Variant& right = rs[QStringLiteral("LcnsNum2B")];
    return (!clas.isNull() && !isLong(clas, 0)) || (!left.isNull() && !left.text().isEmpty()) ||
           (!right.isNull() && !right.text().isEmpty()) || !rs[QStringLiteral("LcnsDate2")].isNull();
}

// Rule 25. Only the current year is required; the two before it may be left out entirely.
bool ApplicationChecker::mblnCheckBusinessYears(const Recordset& rs) {
    bool failed = false;
    for (int i = 1; i <= 3; ++i) {
        const QString yearName = QString::fromUtf8(kYearNames[static_cast<std::size_t>(i - 1)]);
        const Variant& from = rs[QStringLiteral("FYearFrom") + QString::number(i)];
        const Variant& to = rs[QStringLiteral("FYearTo") + QString::number(i)];
        failed |= mblnCheckEra(from, yearName + QStringLiteral("の自"));
        failed |= mblnCheckEra(to, yearName + QStringLiteral("の至"));
        if (from.isNull() && to.isNull()) {
            if (i == 1) {
                mAppend(title(QStringLiteral("審査対象事業年度の期間")) + kMissing);
                failed = true;
            }
        } else if (from.isNull() || to.isNull()) {
            mAppend(title(yearName + QStringLiteral("の期間")) + kMissing);
            failed = true;
        } else if (from.toDate().date.daysTo(to.toDate().date) < 0) {
            mAppend(title(yearName + QStringLiteral("の期間")) + QStringLiteral("の日付が不正です"));
            failed = true;
        }
    }
    return failed;
}

// Rule 26: for the year categories that end on the base date.
bool ApplicationChecker::mblnCheckBaseDateMatchesYearEnd(const Recordset& rs) {
    const Variant& category = rs[QStringLiteral("FYearCtgr1A")];
    if (category.isNull() || category.isEmpty()) return false;
    const std::int32_t c = category.toLong();
    if (c != 0 && c != 1 && c != 3 && c != 4) return false;
    const Variant& baseDate = rs[QStringLiteral("BaseDate")];
    const Variant& yearEnd = rs[QStringLiteral("FYearTo1")];
    if (baseDate.isNull() || yearEnd.isNull() || baseDate.toDate() == yearEnd.toDate()) return false;
    mAppend(QStringLiteral("■申請書の「審査基準日」と「審査対象事業年度（当年度）の至」の日付が一致していません"));
    return true;
}

// The earlier edition's consolidated-statement duty, in place of rule 29.
bool ApplicationChecker::mblnCheckConsolidation(const Recordset& rs) {
    bool failed = mblnCheckBlank(QStringLiteral("FCObgt1"), title(QStringLiteral("連結財務諸表の提出義務の有無")), rs,
                                 Variant(0));
    const Variant& duty = rs[QStringLiteral("FCObgt1")];
    if (isLong(duty, 1)) {
        failed |= mblnCheckBlank(QStringLiteral("FCObgt2"),
                                 title(QStringLiteral("前回申請時の連結財務諸表の提出義務の有無")), rs, Variant(0));
    }
    if (isLong(duty, 1) && isLong(rs[QStringLiteral("Distinction")], 2)) {
        mAppend(title(QStringLiteral("連結財務諸表の提出義務の有無")) + QStringLiteral("の設定が間違っています。") + kCrLf +
                QStringLiteral("「法人又は個人の別」が個人の場合は連結財務諸表の提出義務はありません"));
        failed = true;
    }
    return failed;
}

// The earlier edition's consolidated amounts, after rule 40.
bool ApplicationChecker::mblnCheckConsolidatedAmounts(const Recordset& rs) {
    if (!isLong(rs[QStringLiteral("FCObgt1")], 1)) return false;
    bool failed = mblnCheckBlank(QStringLiteral("Item01Plural"), title(QStringLiteral("当期減価償却実施額（連結決算）")),
                                 rs, Variant(QString()));
    failed |= mblnCheckBlank(QStringLiteral("Item02Plural"), title(QStringLiteral("受取手形割引高（連結決算）")), rs,
                             Variant(QString()));
    return failed;
}

// Rule 32: the agency reads the corporate form only from its full-width
// three-character abbreviation, so the full name, the half-width
// abbreviation and the one-character symbol are all refused.
bool ApplicationChecker::mblnCheckCorporateForms(const Recordset& rs) {
    if (!isLong(rs[QStringLiteral("Distinction")], 1)) return false;
    const Variant& nameValue = rs[QStringLiteral("TRName")];
    if (nameValue.isNull() || trimBlanks(nameValue.text()).isEmpty()) return false;
    const QString name = nameValue.text();
    bool failed = false;
    for (const CorporateForm& form : kCorporateForms) {
        const QString abbreviation = QString::fromUtf8(form.abbreviation);
        const QString symbol = QString::fromUtf8(form.symbol);
        const bool wrong = name.contains(QString::fromUtf8(form.fullName), Qt::CaseSensitive) ||
                           name.contains(vbStrConv(abbreviation, vbNarrow), Qt::CaseSensitive) ||
                           (!symbol.isEmpty() && name.contains(symbol, Qt::CaseSensitive));
        if (!wrong) continue;
        mAppend(title(QStringLiteral("商号又は名称")) + QStringLiteral("の組織形態に正しい略号が用いられていません。"));
        mAppend(QStringLiteral("　※法人の種類は、「") + abbreviation +
                QStringLiteral("」のように全角３文字の略号で入力する必要があります。"));
        failed = true;
    }
    return failed;
}

// Rule 33. An individual may keep one space between family and given name.
bool ApplicationChecker::mblnCheckNameBlanks(const Recordset& rs) {
    const Variant& nameValue = rs[QStringLiteral("TRName")];
    if (nameValue.isNull()) return false;
    const QString name = nameValue.text();
    const QString narrow = vbStrConv(name, vbNarrow);
    const Variant& distinction = rs[QStringLiteral("Distinction")];
    bool wrong = name.size() > trimSpaces(name).size();
    if (isLong(distinction, 1) && narrow.contains(kSpace)) wrong = true;
    if (isLong(distinction, 2)) {
        // The full-width space an input method leaves after the name is not
        // the one between family and given name: the name is judged without it.
        QString own = name;
        while (own.endsWith(kWideSpace)) own.chop(1);
        const QString ownNarrow = vbStrConv(own, vbNarrow);
        const qsizetype first = ownNarrow.indexOf(kSpace);
        if (first >= 0 && ownNarrow.indexOf(kSpace, first + 1) >= 0) wrong = true;
    }
    if (!wrong) return false;
    mAppend(title(QStringLiteral("商号又は名称")) + QStringLiteral("に不要な空白が含まれています"));
    return true;
}

void ApplicationChecker::mCheckAPData() {
    const TrapEnd checked = trapped(QStringLiteral("mCheckAPData"), 1, [&] {
        const Recordset rs =
            gobjMakeRecordset(QStringLiteral("Select * From tmpAPData Where APDataCode=") + QString::number(mlngAPDataCode));
        if (rs.eof()) return;
        const Variant text{QString()};
        bool failed = false;

        failed |= mblnCheckAddress(rs);
        failed |= mblnCheckBlank(QStringLiteral("ApplierColumnName"), title(QStringLiteral("申請者欄の商号又は名称")), rs, text);
        failed |= mblnCheckBlank(QStringLiteral("ApplierColumnPresident"),
                                 title(QStringLiteral("申請者欄の代表者役職及び氏名")), rs, text);
        failed |= mblnCheckEra(rs[QStringLiteral("ApplyDate")], QStringLiteral("申請年月日"));
        failed |= mblnCheckLicence(rs, 1, QStringLiteral("申請時の許可番号"));
        if (mblnPreviousLicenceGiven(rs)) failed |= mblnCheckLicence(rs, 2, QStringLiteral("前回申請時の許可番号"));
        failed |= mblnCheckBlank(QStringLiteral("BaseDate"), title(QStringLiteral("審査基準日")), rs, text);
        failed |= mblnCheckEra(rs[QStringLiteral("BaseDate")], QStringLiteral("審査基準日"));
        failed |= mblnCheckBusinessYears(rs);
        failed |= mblnCheckBaseDateMatchesYearEnd(rs);
        failed |= mblnCheckBlank(QStringLiteral("Distinction"), title(QStringLiteral("法人又は個人の別")), rs, Variant(0));
        failed |= mblnCheckBlank(QStringLiteral("LastApl"), title(QStringLiteral("前回申請の有無")), rs, Variant(0));
        if (edition_ == FormEdition::Form200804) {
            failed |= mblnCheckBlank(QStringLiteral("FType"), title(QStringLiteral("単独決算又は連結決算の別")), rs,
                                     Variant(0));
        } else {
            failed |= mblnCheckConsolidation(rs);
        }
        failed |= mblnCheckBlank(QStringLiteral("TRNameKana"), title(QStringLiteral("商号又は名称のフリガナ")), rs, text);
        failed |= mblnCheckBlank(QStringLiteral("TRName"), title(QStringLiteral("商号又は名称")), rs, text);
        failed |= mblnCheckCorporateForms(rs);
        failed |= mblnCheckNameBlanks(rs);
        failed |= mblnCheckBlank(QStringLiteral("PSNameKana"), title(QStringLiteral("代表者又は個人の氏名のフリガナ")), rs,
                                 text);
        failed |= mblnCheckBlank(QStringLiteral("PSName"), title(QStringLiteral("代表者又は個人の氏名")), rs, text);
        failed |= mblnCheckBlank(QStringLiteral("OfficeAddr"), title(QStringLiteral("主たる営業所の所在地")), rs, text);
        const QString cityTitle = title(QStringLiteral("主たる営業所の所在地の市区町村コード"));
        failed |= mblnCheckBlank(QStringLiteral("OfficeCityCode"), cityTitle, rs, text);
        failed |= mblnCheckTooLong(rs, QStringLiteral("OfficeCityCode"), cityTitle, 5);
        failed |= mblnCheckBlank(QStringLiteral("OfficeZipCode"), title(QStringLiteral("主たる営業所の所在地の郵便番号")), rs,
                                 text);
        failed |= mblnCheckBlank(QStringLiteral("OfficeTel"), title(QStringLiteral("主たる営業所の所在地の電話番号")), rs,
                                 text);
        if (edition_ == FormEdition::Earlier) failed |= mblnCheckConsolidatedAmounts(rs);

        mblnErrorFlag = mblnErrorFlag || failed;
    });
    if (!checked) {
        mstrMessage += QStringLiteral("■プログラムのエラーが発生しました。(場所:mCheckAPData)") + kCrLf +
                       QStringLiteral("　データファイルが更新されていない可能性があります。ノルデバンを実行してください。") +
                       kCrLf + kCrLf;
        mblnErrorFlag = true;
    }
}

}  // namespace kelvary
