// Period import and item repairs. Every routine traps its own errors under
// its own name; a failed repair leaves the period as it was copied.
#include "print/PeriodImport.h"

#include "db/clsSqlText.h"
#include "db/mdlFunctionDatabase.h"
#include "platform/AppObject.h"
#include "platform/Cp932.h"
#include "platform/VbError.h"
#include "qr/QrSymbolRecord.h"
#include "startup/mdlFunctionStandard.h"
#include "startup/mdlVersion.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>

#include <vector>

namespace kelvary {
namespace {

const QString kCrLf = QStringLiteral("\r\n");

QString periodWhere(std::int32_t indexId) { return QStringLiteral("FSDataCode=") + QString::number(indexId); }

Recordset openOrThrow(const QString& sql) {
    Recordset rs = gobjMakeRecordset(sql);
    if (rs.isNothing()) throw VbError(vberr::DatabaseError, QStringLiteral("データを読み込めませんでした。"));
    return rs;
}

struct CopyPair {
    const char* source;
    const char* target;
};
const CopyPair kCopyPairs[] = {
    {"T_FS", "TmpFSInfoData"},
    {"P_FSItemData", "TmpFSItemData"},
    {"T_FSNote", "TmpFSNoteData"},
    {"T_FSCapitalRow", "TmpFSCapitalRow"},
    {"T_FSCapitalCol", "TmpFSCapitalCol"},
};

// The working copies have exactly the columns the sibling program's tables
// are meant to have. A column the sibling database lacks (a file of an older
// version of that program) would reach the payloads as empty values without a
// word: it is reported as the item missing from an older data file, once per
// table and column in the run, however many periods are copied.
void reportColumnsMissingFromSource(const QString& source, const Recordset& rs, const Recordset& working) {
    static QSet<QString> reported;
    for (int i = 0; i < working.fieldCount(); ++i) {
        const QString& column = working.fieldName(i);
        const QString key = source + QLatin1Char('.') + column;
        if (reported.contains(key) || rs.hasField(column)) continue;
        reported.insert(key);
        trapped(QStringLiteral("mCopyZaimuData"), 0, [&] {
            throw VbError(vberr::ItemNotFound, QStringLiteral("財務諸表データ (Ledra.mdb) のテーブル ") + source +
                                                   QStringLiteral(" に項目 ") + column +
                                                   QStringLiteral(" がありません。この項目は空のまま出力されます。"));
        });
    }
}

// A text of the sibling database (SQLite keeps any Unicode) may hold a
// character the payloads' code page cannot carry: 𠮷, an emoji, a no-break
// space. The agency would read "?" there; the working copy holds that "?",
// so the pages show what the agency reads, and the user is told once per
// table and column which characters they were.
Variant carriedValue(const QString& source, const QString& column, const Variant& value) {
    if (!value.isString()) return value;
    const QStringList lost = cp932Uncarriable(value.text());
    if (lost.isEmpty()) return value;
    QString text = value.text();
    for (const QString& character : lost) text.replace(character, QStringLiteral("?"));
    static QSet<QString> reported;
    const QString key = source + QLatin1Char('.') + column;
    if (!reported.contains(key)) {
        reported.insert(key);
        gMsgbox(0,
                QStringLiteral("財務諸表データ (Ledra.mdb) のテーブル ") + source + QStringLiteral(" の項目 ") + column +
                    QStringLiteral(" に、QRコードの文字コード (Shift_JIS) で表せない文字「") +
                    lost.join(QStringLiteral("」「")) +
                    QStringLiteral("」があります。審査機関には「?」として届くため、書類にも「?」と印字します。"),
                QStringLiteral("文字の置き換え"));
    }
    return Variant(text);
}

void mReplaceFixedAssetsSub(std::int32_t indexId, int first, int second) {
    trapped(QStringLiteral("mReplaceFixedAssetsSub"), 0, [&] {
        const QString where = periodWhere(indexId) + QStringLiteral(" And ItemCode=");
        const Currency firstValue =
            gvarCheckData(0, gvarGetData(QStringLiteral("ItemValue"), QStringLiteral("tmpFSItemData"),
                                         where + QString::number(first), Variant(0)),
                          Variant(0))
                .toCurrency();
        const Currency secondValue =
            gvarCheckData(0, gvarGetData(QStringLiteral("ItemValue"), QStringLiteral("tmpFSItemData"),
                                         where + QString::number(second), Variant(0)),
                          Variant(0))
                .toCurrency();
        if (firstValue.scaled != 0 || secondValue.scaled == 0) return;
        gblnExecuteSql(QStringLiteral("Update tmpFSItemData Set ItemValue=") + Variant(secondValue).toString() +
                       QStringLiteral(" Where ") + where + QString::number(first));
        gblnExecuteSql(QStringLiteral("Update tmpFSItemData Set ItemValue=0 Where ") + where +
                       QString::number(second));
    });
}

void mPref01SpecialSub(std::int32_t indexId, int fsItemId) {
    gblnExecuteSql(QStringLiteral("Update tmpFSItemData Set NameChangeFlag=True Where ") + periodWhere(indexId) +
                   QStringLiteral(" And FSItemID=") + QString::number(fsItemId) +
                   QStringLiteral(" And ItemValue<>0"));
}

void mPref01SpecialSub2(std::int32_t indexId, int oldCode, int newCode) {
    clsSqlText sql;
    sql.SetData(QStringLiteral("ItemCode"), Variant(newCode), 0);
    sql.SetData(QStringLiteral("NameChangeFlag"), Variant(true), 0);
    sql.SetTable(QStringLiteral("tmpFSItemData"));
    sql.SetWhere(periodWhere(indexId) + QStringLiteral(" And ItemCode=") + QString::number(oldCode) +
                 QStringLiteral(" And ItemValue<>0"));
    gblnExecuteSql(sql.GetUpdateSql());
}

void mPref01SpecialSub3(std::int32_t indexId, int code) {
    gblnExecuteSql(QStringLiteral("Delete From tmpFSItemData Where ") + periodWhere(indexId) +
                   QStringLiteral(" And ItemCode=") + QString::number(code));
}

}  // namespace

void mCopyZaimuData(std::int32_t indexId, std::int32_t linkCode) {
    trapped(QStringLiteral("mCopyZaimuData"), 0, [&] {
        const QString program =
            gvarGetData(QStringLiteral("NewZaimuProgram"), QStringLiteral("tblWork"), QString(), Variant(QString())).text();
        const QString version = gstrGetFileVersion(program);
        for (const CopyPair& pair : kCopyPairs) {
            const QString target = QString::fromLatin1(pair.target);
            Recordset rs = openOrThrow(QStringLiteral(" Select * From ") + QString::fromLatin1(pair.source) +
                                       QStringLiteral(" Where FSDataCode=") + QString::number(linkCode));
            // The working copy's columns, read once for the table: a large
            // period costs the same few statements as a small one.
            const Recordset working =
                openOrThrow(QStringLiteral("Select * From ") + target + QStringLiteral(" Where 1=0"));
            reportColumnsMissingFromSource(QString::fromLatin1(pair.source), rs, working);
            std::vector<bool> targetHas(static_cast<size_t>(rs.fieldCount()));
            for (int i = 0; i < rs.fieldCount(); ++i)
                targetHas[static_cast<size_t>(i)] = working.hasField(rs.fieldName(i));
            clsInsertRows rows;
            for (; !rs.eof(); rs.moveNext()) {
                clsSqlText sql;
                for (int i = 0; i < rs.fieldCount(); ++i) {
                    const QString& name = rs.fieldName(i);
                    int fieldType = 3;
                    int adoType = rs.fieldType(i);
                    if (name.compare(QStringLiteral("VersionNumber"), Qt::CaseInsensitive) == 0) {
                        sql.SetData(name,
                                    Variant(QStringLiteral("Ledra:") + version + QStringLiteral("(") +
                                            rs.value(i).text() + QStringLiteral(")")),
                                    fieldType, adoType);
                    } else if (name.compare(QStringLiteral("FSDataCode"), Qt::CaseInsensitive) == 0) {
                        sql.SetData(name, Variant::fromLong(indexId), fieldType, adoType);
                    } else if (targetHas[static_cast<size_t>(i)]) {
                        sql.SetData(name, carriedValue(QString::fromLatin1(pair.source), name, rs.value(i)), fieldType,
                                    adoType);
                    }
                }
                sql.SetTable(target);
                rows.Insert(sql);
            }
            rows.Commit();
        }
    });
}

// A field that is not there is the answer, not an error.
bool mblnCheckExistField(const QString& table, const QString& field) {
    return trapped(QStringLiteral("mblnCheckExistField"), 0, false, [&] {
        // Only the field collection is asked for: no row needs to be read.
        const Recordset rs = openOrThrow(QStringLiteral("Select * From ") + table + QStringLiteral(" Where 1=0"));
        try {
            (void)rs.fieldIndex(field);
        } catch (const VbError& e) {
            if (e.number() == vberr::ItemNotFound) return false;
            throw;
        }
        return true;
    });
}

void mPutSpecialItemCode(std::int32_t indexId) {
    struct SpecialItem {
        int code;
        const char* name;
        const char* column;
    };
    static const SpecialItem items[] = {
        {208, "受取手形割引高", "NoteReceiptBillDiscount"},
        {204, "受取手形裏書譲渡高", "NoteReceiptBillGive"},
        {207, "当期減価償却実施額", "AccumulatedDepreciation"},
    };
    trapped(QStringLiteral("mPutSpecialItemCode"), 0, [&] {
        const std::int32_t maxId = glngGetMaxValue(QStringLiteral("FSItemID"), QStringLiteral("tmpFSItemData"), QString());
        int offset = 0;
        for (const SpecialItem& item : items) {
            const Variant value = gvarGetData(QString::fromLatin1(item.column), QStringLiteral("tmpFSInfoData"),
                                              periodWhere(indexId), Variant(QString()));
            clsSqlText sql;
            sql.SetData(QStringLiteral("FSDataCode"), Variant::fromLong(indexId), 0);
            sql.SetData(QStringLiteral("FSItemID"), Variant::fromLong(maxId + ++offset), 0);
            sql.SetData(QStringLiteral("ItemCode"), Variant(item.code), 0);
            sql.SetData(QStringLiteral("ItemName"), Variant(QString::fromUtf8(item.name)), 1);
            sql.SetData(QStringLiteral("ItemValue"), value, 0);
            sql.SetTable(QStringLiteral("tmpFSItemData"));
            gblnExecuteSql(sql.GetInsertSql());
        }
    });
}

void mReplaceFixedAssets(std::int32_t indexId) {
    static const int pairs[][2] = {{16, 17}, {19, 20}, {22, 23}, {27, 28}, {371, 372}};
    for (const auto& pair : pairs) mReplaceFixedAssetsSub(indexId, pair[0], pair[1]);
}

void mPref01Special(std::int32_t indexId) {
    trapped(QStringLiteral("mPref01Special"), 0, [&] {
        const Variant pref = gvarGetData(QStringLiteral("OtherSoftPrefCode"), QStringLiteral("tmpFSInfoData"),
                                         periodWhere(indexId), Variant(0));
        if (pref.isNull() || !pref.isNumeric() || pref.toDouble() != 1.0) return;
        for (int id = 508; id <= 520; ++id) mPref01SpecialSub(indexId, id);
        const Variant distinction = gvarGetData(QStringLiteral("Distinction"), QStringLiteral("tmpFSInfoData"),
                                                periodWhere(indexId), Variant(0));
        if (distinction.isNull() || !distinction.isNumeric() || distinction.toDouble() != 2.0) return;
        static const int recodes[][2] = {{9, 222},   {62, 227},  {223, 225}, {224, 225},
                                         {34, 225},  {36, 225},  {40, 225},  {29, 225}};
        for (const auto& r : recodes) mPref01SpecialSub2(indexId, r[0], r[1]);
        static const int deleted[] = {16, 17, 19, 20, 22, 23, 30, 35, 45, 27, 28};
        for (int code : deleted) mPref01SpecialSub3(indexId, code);
    });
}

void mCheckExcelConvData(std::int32_t indexId, const QString& fiscalYearNumber) {
    trapped(QStringLiteral("mCheckExcelConvData"), 0, [&] {
        const QString version = gvarGetData(QStringLiteral("VersionNumber"), QStringLiteral("tmpFSInfoData"),
                                            periodWhere(indexId), Variant(QString()))
                                    .text();
        if (!version.contains(QStringLiteral("Excel"), Qt::CaseInsensitive)) return;
        gMsgbox(0,
                QStringLiteral("第") + fiscalYearNumber +
                    QStringLiteral("期の決算期データは「Tessaro」から「Orvane」にコンバートしたものです。") + kCrLf +
                    kCrLf +
                    QStringLiteral("「Tessaro」と、「Orvane」で作成した財務諸表では、機能の違いにより若干の差異が発生する場合がございます。") +
                    kCrLf + kCrLf +
                    QStringLiteral("「Tessaro」で作成した財務諸表を申請に利用した期のデータについては、エクセル版のデータを直接読込んでQRコードにしてください。"),
                QStringLiteral("情報"));
    });
}

bool mClearTempFolder() {
    return trapped(QStringLiteral("mClearTempFolder"), 1, false, [&] {
        const QString folder = app::path() + QStringLiteral("/Temp");
        const QFileInfo info(folder);
        if (!info.isDir())
            throw VbError(vberr::PathNotFound, QStringLiteral("作業フォルダー「") + QDir::toNativeSeparators(folder) +
                                                   QStringLiteral("」がありません。QRコードを作成できません。"));
        if (!info.isWritable())
            throw VbError(vberr::PermissionDenied,
                          QStringLiteral("作業フォルダー「") + QDir::toNativeSeparators(folder) +
                              QStringLiteral("」に書き込めません。QRコードを作成できません。"
                                             "フォルダーに書き込む権限があるか確認してください。"));
        // Only the symbol files the program writes there go. Temp may be a
        // link to a folder of the user's, or hold files the user put there;
        // those stay.
        QDir temp(folder);
        for (const QString& name : temp.entryList(QDir::Files | QDir::System | QDir::Hidden)) {
            if (qr::isSymbolFile(name) && !temp.remove(name))
                throw VbError(vberr::PermissionDenied, QStringLiteral("作業フォルダーの前回のファイル「") + name +
                                                           QStringLiteral("」を削除できません。"));
        }
        return true;
    });
}

}  // namespace kelvary
