// The application data file's form fields, the filer's details and the
// applicant key. Each section is read by its own routine, which opens the
// file, finds its header and reports its own failure, so a damaged [DocData]
// section costs the application record but not the filer's details.
//
// The [DocData] column names and values come from a file and go into SQL
// text. A column name must be a plain identifier; the values become literals
// of their type in clsSqlText, which refuses a number or a date that does
// not convert.
#include "intake/clsApply2Data.h"

#include "db/clsSqlText.h"
#include "db/mdlFunctionDatabase.h"
#include "intake/ApplicationFile.h"
#include "intake/ApplicationFlags.h"
#include "platform/Recordset.h"
#include "platform/ProfileFile.h"
#include "platform/SequentialInput.h"
#include "platform/VbError.h"
#include "startup/mdlFunctionStandard.h"

#include <QDate>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>
#include <array>

namespace kelvary {
namespace {

// The edition of the application form in force from 2004-03-01 is the one a
// file without an EnforceDate record was written for.
const QDate kDefaultEnforceDate(2004, 3, 1);

constexpr std::array kUserInfoKeys = {"UserName", "UserName2", "UserAddress", "UserTel",
                                      "UserFax",  "RegistNumber", "UserID"};

struct DocDataRecord {
    QString column;
    Variant value;
    int fieldType;
};

QString docDataPlace(const QString& column) {
    return QStringLiteral("申請書データ [DocData] の項目「") + column + QStringLiteral("」");
}

void requirePlainColumnName(const Variant& column) {
    static const QRegularExpression identifier(QStringLiteral("^[A-Za-z_][A-Za-z0-9_]*$"));
    const QString name = column.text();
    if (identifier.match(name).hasMatch()) return;
    throw VbError(vberr::InvalidProcedureCall,
                  QStringLiteral("申請書データ [DocData] の項目名「") + name +
                      QStringLiteral("」は使えません。項目名は半角英数字と「_」だけで書かれ、"
                                     "数字で始まらないものに限ります。"));
}

// The insert text names the edition when a column does or a text value
// carries the word; numbers and dates are literals that cannot.
bool namesEnforceDate(const QList<DocDataRecord>& records) {
    const QString word = QStringLiteral("EnforceDate");
    for (const DocDataRecord& record : records) {
        if (record.column.contains(word)) return true;
        if (record.fieldType == 1 && record.value.text().contains(word)) return true;
    }
    return false;
}

// A column tmpAPData does not have, or one named twice, would make the
// database refuse the whole statement in its own words, and every later step
// would fail for want of the application record. Each such record is named
// once and left out; the others are written.
QList<DocDataRecord> knownColumnsOnce(const QList<DocDataRecord>& records) {
    const Recordset table = gobjMakeRecordset(QStringLiteral("Select * From tmpAPData Where 1=0"));
    QList<DocDataRecord> kept;
    QSet<QString> seen;
    for (const DocDataRecord& record : records) {
        QString problem;
        if (!table.isNothing() && !table.hasField(record.column))
            problem = QStringLiteral("は申請書の項目にありません。この項目は読み込まずに続けます。");
        else if (seen.contains(record.column.toLower()))
            problem = QStringLiteral("が2回書かれています。最初の値を使い、2回目の値は読み込まずに続けます。");
        if (problem.isEmpty()) {
            seen.insert(record.column.toLower());
            kept << record;
            continue;
        }
        trapped(QStringLiteral("mLoadAPData"), 0,
                [&] { throw VbError(vberr::ItemNotFound, docDataPlace(record.column) + problem); });
    }
    return kept;
}

// UserData.ini holds one value a line: a line break inside a value would
// start new lines there, and a "[" after it a new section.
Variant withoutLineBreaks(const QString& key, const Variant& value) {
    if (!value.isString()) return value;
    QString text = value.text();
    if (!text.contains(QLatin1Char('\r')) && !text.contains(QLatin1Char('\n'))) return value;
    text.replace(QStringLiteral("\r\n"), QStringLiteral(" "));
    text.replace(QLatin1Char('\r'), QLatin1Char(' '));
    text.replace(QLatin1Char('\n'), QLatin1Char(' '));
    gMsgbox(0, QStringLiteral("申請書データ [UserInfo] の ") + key +
                   QStringLiteral(" に改行が含まれていたため、改行を空白に置き換えました。\r\n") + text,
            QStringLiteral("情報"));
    return Variant(text);
}

}  // namespace

std::int32_t clsApply2Data::LoadData(const QString& file) {
    mstrAnlFile = file;
    mLoadBasicInfo();
    mLoadAPData();
    mLoadUserInfo();
    return mlngMainDataCode;
}

void clsApply2Data::mLoadBasicInfo() {
    if (mstrAnlFile.isEmpty()) return;
    trapped(QStringLiteral("mLoadBasicInfo"), 1, [&] {
        SequentialInput file(mstrAnlFile);
        mstrSearchHeader(QStringLiteral("[BasicInfo]"), file);
        while (!file.eof()) {
            const QList<Variant> record = intake::readRecord(file, 2);
            if (intake::isEndRecord(record)) break;
            const QString key = record[0].text();
            if (key == QLatin1String("ApplyDataID"))
                mlngMainDataCode = record[1].toLong();
            else if (key == QLatin1String("ZaimuDataPath"))
                mstrOldZaimuDataPath = record[1].text();
        }
    });
}

void clsApply2Data::mLoadAPData() {
    trapped(QStringLiteral("mLoadAPData"), 1, [&] {
        QList<DocDataRecord> records;
        {
            SequentialInput file(mstrAnlFile);
            mstrSearchHeader(QStringLiteral("[DocData]"), file);
            while (!file.eof()) {
                const QList<Variant> record = intake::readRecord(file, 3);
                if (intake::isEndRecord(record)) break;
                requirePlainColumnName(record[0]);
                records.append({record[0].text(), record[1], menmConvertDataType(record[2])});
            }
        }

        clsSqlText sql;
        QList<DocDataRecord> written = knownColumnsOnce(records);
        for (DocDataRecord& record : written) sql.SetData(record.column, record.value, record.fieldType);
        sql.SetTable(QStringLiteral("tmpAPData"));
        if (!namesEnforceDate(records))
            sql.SetData(QStringLiteral("EnforceDate"), Variant(kDefaultEnforceDate), enmDate);

        const std::int32_t apDataCode =
            glngGetMaxValue(QStringLiteral("APDataCode"), QStringLiteral("tmpAPData"), QString()) + 1;
        sql.SetData(QStringLiteral("MainDataCode"), Variant::fromLong(mlngMainDataCode), enmNumber);
        sql.SetData(QStringLiteral("APDataCode"), Variant::fromLong(apDataCode), enmNumber);
        gblnExecuteSql(sql.GetInsertSql());
    });
}

void clsApply2Data::mLoadUserInfo() {
    if (mstrAnlFile.isEmpty()) return;
    trapped(QStringLiteral("mLoadUserInfo"), 1, [&] {
        // The section's keys go into UserData.ini in one save, not one each.
        ProfileWriteBatch settings(userDataIniPath());
        SequentialInput file(mstrAnlFile);
        mstrSearchHeader(QStringLiteral("[UserInfo]"), file);
        QStringList known{QStringLiteral("Representation"), QStringLiteral("SinseiType")};
        for (const char* key : kUserInfoKeys) known << QLatin1String(key);
        intake::SectionKeyCheck keys(QStringLiteral("[UserInfo]"), known, QStringLiteral("mLoadUserInfo"));
        while (!file.eof()) {
            const int line = file.lineNumber();
            const QList<Variant> record = intake::readRecord(file, 3);
            if (intake::isEndRecord(record)) break;
            keys.check(record[0], line);
            const QString key = record[0].text();
            const Variant& value = record[1];
            if (std::find(kUserInfoKeys.begin(), kUserInfoKeys.end(), key) != kUserInfoKeys.end())
                gWriteIniData(key, withoutLineBreaks(key, value), QStringLiteral("UserInfo"));
            else if (key == QLatin1String("Representation"))
                gblnRepresentation = value.text() == QLatin1String("Representation");
            else if (key == QLatin1String("SinseiType"))
                glngSinseiType = value.toLong();
        }
        settings.commit();
    });
}

QString clsApply2Data::mstrSearchHeader(const QString& header, SequentialInput& file) {
    return trapped(QStringLiteral("mstrSearchHeader"), 1, {}, [&] {
        return intake::searchHeader(file, header);
    });
}

clsApply2Data::enmDataType clsApply2Data::menmConvertDataType(const Variant& typeCode) {
    return trapped(QStringLiteral("menmConvertDataType"), 1, enmNumber, [&] {
        if (!typeCode.isNumeric() || typeCode.isEmpty()) return enmNumber;
        const double code = typeCode.toDouble();
        if (code == 2) return enmText;
        if (code == 3) return enmDate;
        return enmNumber;
    });
}

}  // namespace kelvary
