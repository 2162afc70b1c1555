// A scratch program folder with one financial statement in the working
// tables (FSDataCode 1, a corporation, 2006-07-01 edition, a valid header),
// the sample's item master linked as M_FSItem, the relation and name tables
// emptied, and a corporation rule file in which every check number passes
// unless a test gives it a record of its own.
#pragma once

#include "CheckHome.h"

#include "platform/Cp932.h"

#include <QMap>

namespace kelvary::test {

class StatementHome : public IntakeHome {
public:
    StatementHome() {
        gRefreshLinkTable(QStringLiteral("M_FSItem"), file(QStringLiteral("sample/Ledra.mdb")));
        exec(database(), "DELETE FROM tblFSCheckMaster");
        exec(database(), "DELETE FROM tblFSInvalidItemList");
        exec(database(),
             "INSERT INTO tmpFSInfoData (FSDataCode, MainDataCode, FYearNumber, FYearFrom, FYearTo, ApplyerName, "
             "Distinction, TaxType, TaxFreeFlag, CloseAccountType, SideBusinessFlag, MeetingDate, EnforceDate) "
             "VALUES (1, 3, 40, '2008-04-01', '2009-03-31', '（株）北斗建設', 1, 2, 0, 0, 0, '2009-05-28', '2006-07-01')");
        writeSumRules({});
    }

    void sql(const QString& statement) { exec(database(), statement.toUtf8().constData()); }

    // One item row of the statement.
    void item(int code, const QString& name, int docCode, double value, int sortNumber = 0) {
        sql(QStringLiteral("INSERT INTO tmpFSItemData (FSDataCode, FSItemID, ItemCode, ItemName, ItemValue, DocCode, "
                           "SortNumber) VALUES (1, %1, %1, '%2', %3, %4, %5)")
                .arg(code)
                .arg(name)
                .arg(value, 0, 'f', 0)
                .arg(docCode)
                .arg(sortNumber));
    }

    // The corporation rule file: the given records (text after the ":A"
    // header line), every other check number an empty sum of an absent item.
    void writeSumRules(const QMap<int, QString>& records, const QList<int>& leftOut = {}) {
        QString text;
        for (int k = 400; k <= 540; ++k) {
            if (leftOut.contains(k)) continue;
            text += QStringLiteral(":A%1\r\n").arg(k);
            text += records.contains(k) ? records[k] : QStringLiteral("空\r\n計\r\n対象\r\n0N,0T\r\n");
        }
        write(QStringLiteral("DbtData0607H.txt"), cp932Encode(text));
    }
};

}  // namespace kelvary::test
