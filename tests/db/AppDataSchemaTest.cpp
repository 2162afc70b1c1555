// The databases the build puts into the program folder: SystemData.mdb with
// its working, settings, master and link tables, and the empty sibling
// database Ledra_dummy.mdb. Expected headers and rows are written out
// here as the program's contract with the sibling program and the user, not
// read back from the SQL that made the files; the files are read with SQLite
// directly, so a fault in the data access layer cannot hide one here.
#include "support/ConnectedHome.h"
#include "support/TestSupport.h"

#include <gtest/gtest.h>

namespace kelvary::test {
namespace {

QString systemData() { return templateDir() + QStringLiteral("/SystemData.mdb"); }

QString text(const QString& database, const QString& sql) {
    return sqlColumn(database, sql.toUtf8().constData()).value(0);
}
double number(const QString& sql) { return text(systemData(), sql).toDouble(); }

const char* const kWorkingTables[] = {"tblIndex",         "tmpAPData",        "tmpFSInfoData",   "tmpFSItemData",
                                      "tmpFSNoteData",    "tmpFSCapitalRow",  "tmpFSCapitalCol", "tmpOldFSInfoData",
                                      "tmpOldFSItemData", "tmpOldFSNoteData"};

// ------------------------------------------------------------------ files

TEST(AppDataFiles, TheThreeDatabasesAreSqliteFiles) {
    // Every .mdb of the program folder must begin with the 16-byte SQLite 3
    // header "SQLite format 3" and a NUL; a Jet file would begin otherwise.
    const QByteArray header = hexBytes("53 51 4c 69 74 65 20 66 6f 72 6d 61 74 20 33 00");
    for (const char* name : {"SystemData.mdb", "Ledra_dummy.mdb", "sample/Ledra.mdb"})
        EXPECT_EQ(readFile(appDir() + QLatin1Char('/') + QLatin1String(name)).first(16), header) << name;
}

// ---------------------------------------------------------- SystemData.mdb

TEST(AppDataSystemData, ShipsEmptyWorkingTablesAndOneSettingsRow) {
    for (const char* table : kWorkingTables)
        EXPECT_EQ(number(QStringLiteral("SELECT COUNT(*) FROM ") + QLatin1String(table)), 0) << table;
    // The start rewrites tblWork with an UPDATE without condition: with no row
    // it would change nothing, with two both would be overwritten.
    EXPECT_EQ(number(QStringLiteral("SELECT COUNT(*) FROM tblWork")), 1);
}

// ------------------------------------------------------------ master rows

TEST(AppDataMasters, PrefecturesCarryTheirJisCodesAndSuffixes) {
    EXPECT_EQ(sqlRows(systemData(), QStringLiteral("SELECT COUNT(*), COUNT(DISTINCT PrefID), MIN(PrefID), MAX(PrefID) "
                                                   "FROM tblPref")),
              QStringList{QStringLiteral("48|48|0|47")});
    // JIS X 0401: fixed codes known from outside this program.
    const std::pair<int, const char*> known[] = {
        {0, "国土交通大臣"}, {1, "北海道"},  {2, "青森県"},   {13, "東京都"},
        {14, "神奈川県"},    {23, "愛知県"}, {26, "京都府"},  {27, "大阪府"},
        {30, "和歌山県"},    {40, "福岡県"}, {46, "鹿児島県"}, {47, "沖縄県"}};
    for (const auto& [code, name] : known)
        EXPECT_EQ(text(systemData(), QStringLiteral("SELECT PrefName FROM tblPref WHERE PrefID=%1").arg(code)),
                  QString::fromUtf8(name))
            << code;
    // Governors' titles are PrefName & "知事": one 都, one 道, two 府, 43 県.
    for (const auto& [suffix, count] : {std::pair{"都", 1}, {"道", 1}, {"府", 2}, {"県", 43}})
        EXPECT_EQ(number(QStringLiteral("SELECT COUNT(*) FROM tblPref WHERE PrefName LIKE '%%1'")
                             .arg(QString::fromUtf8(suffix))),
                  count)
            << suffix;
}

// ------------------------------------------------------------------ links

}  // namespace
}  // namespace kelvary::test
