// The period index and the links to the sibling database: which file the
// twelve links read, which periods are indexed in which order, what tblWork
// records, and how a missing or foreign sibling database is handled.
#include "intake/clsAnlBasicInfo.h"

#include "IntakeHome.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

namespace kelvary {
namespace {

using test::IntakeHome;

const char* const kLinkedTables[] = {"T_FS",           "T_FSCapitalCol", "T_FSCapitalRow", "T_FSNote",
                                     "P_FSItemData",   "M_FSItem",       "M_FSCapitalRow", "M_FSCapitalCol",
                                     "T_MainData",     "M_FSDoc",        "M_FSItemDetail", "T_FSItemDetail"};

// Applicant 55 of this program is applicant 5 of the sibling database; it has
// two periods of year 3 (FSDataCode 21 before 20 in the table), one of year 2
// and one of year 1 without a start date. Applicant 66 is someone else.
const char kSiblingRows[] =
    "INSERT INTO T_MainData (MainDataCode, OtherSoftCode, ApplyerName) VALUES (5, 55, 'A'), (6, 66, 'B');"
    "INSERT INTO T_FS (FSDataCode, MainDataCode, FYearNumber, FYearFrom, FYearTo, ApplyerName) VALUES"
    " (21, 5, 3, '2008-04-01', '2009-03-31', 'A'),"
    " (20, 5, 3, '2007-04-01', '2008-03-31', 'A'),"
    " (30, 5, 2, '2006-04-01', '2007-03-31', 'A'),"
    " (10, 5, 1, NULL, '2006-03-31', 'A'),"
    " (40, 6, 1, '2005-04-01', '2006-03-31', 'B');";

const QStringList kExpectedIndex = {
    QStringLiteral("1|5|0|10|NULL|A|1.0|NULL|2006-03-31|0"),
    QStringLiteral("2|5|0|30|NULL|A|2.0|2006-04-01|2007-03-31|0"),
    QStringLiteral("3|5|0|20|NULL|A|3.0|2007-04-01|2008-03-31|0"),
    QStringLiteral("4|5|0|21|NULL|A|3.0|2008-04-01|2009-03-31|0"),
};

QByteArray basicInfo(const QByteArray& records) {
    return "\"[BasicInfo]\"\r\n" + records + "\"[End]\"";
}

class AnlBasicInfoTest : public ::testing::Test {
protected:
    // A sibling database with the rows above in folder (made inside the home).
    QString makeSibling(const QString& folder) {
        QDir().mkpath(folder);
        QFile script(QStringLiteral(KELVARY_SOURCE_DIR "/data/ledra/sibling_tables.sql"));
        EXPECT_TRUE(script.open(QIODevice::ReadOnly));
        const QString database = folder + QStringLiteral("/Ledra.mdb");
        home.exec(database, script.readAll().constData());
        home.exec(database, kSiblingRows);
        return database;
    }

    void load(const QByteArray& bytes, const QString& name = QStringLiteral("app.dat")) {
        clsAnlBasicInfo reader;
        reader.LoadData(home.write(name, bytes));
        mainDataCode = reader.MainDataCode();
    }

    // True when all twelve links read the given file.
    ::testing::AssertionResult linkedTo(const QString& file) {
        const QString expected = QFileInfo(file).canonicalFilePath();
        for (const char* table : kLinkedTables) {
            const QString linked = QFileInfo(gobjConnection->linkedFile(QString::fromLatin1(table))).canonicalFilePath();
            if (expected.isEmpty() || linked != expected)
                return ::testing::AssertionFailure() << table << " reads " << linked.toStdString();
        }
        return ::testing::AssertionSuccess();
    }

    QStringList index() {
        return home.rows("SELECT IndexID, MainDataCode, DataType, LinkCode, FileName, ApplyerName, FYearNumber, "
                         "FYearFrom, FYearTo, PrintFlag FROM tblIndex ORDER BY IndexID");
    }
    QStringList work() {
        return home.rows("SELECT OldZaimuDataPath, MainDataCode, ExcelDataFolder, NewZaimuDataPath, "
                         "NewZaimuProgram FROM tblWork");
    }

    IntakeHome home;
    std::int32_t mainDataCode = -1;
};

TEST_F(AnlBasicInfoTest, WithoutSiblingFolderLinksTheDummyAndIndexesNothing) {
    // Were the index built from the dummy, applicant 55 would get a period.
    home.exec(home.file(QStringLiteral("Ledra_dummy.mdb")),
              "INSERT INTO T_MainData VALUES (9, 55, 'X');"
              "INSERT INTO T_FS (FSDataCode, MainDataCode, FYearNumber) VALUES (1, 9, 1);");
    home.exec(home.database(), "UPDATE tblWork SET OldZaimuDataPath='stale', NewZaimuDataPath='stale'");

    load(basicInfo("\"ApplyDataID\",55\r\n\"ZaimuDataPath\",\"z\\\"\r\n\"ExcelDataFolder\",\"x\"\r\n"
                   "\"LedraDataPath\",\"\"\r\n\"PrefID\",13\r\n"));
    EXPECT_EQ(mainDataCode, 55);
    EXPECT_EQ(home.errorPlaces(), QStringList());
    EXPECT_TRUE(linkedTo(home.file(QStringLiteral("Ledra_dummy.mdb"))));
    EXPECT_EQ(index(), QStringList());
    EXPECT_EQ(work(), QStringList{QStringLiteral("z\\|55|x||")});
}

class SiblingFolderTest : public AnlBasicInfoTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(SiblingFolderTest, IndexesTheApplicantsPeriodsInYearThenCodeOrder) {
    const QString folder = home.file(QStringLiteral("ledra"));
    const QString sibling = makeSibling(folder);
    load(basicInfo("\"ApplyDataID\",55\r\n\"LedraDataPath\",\"" + folder.toUtf8() + GetParam() + "\"\r\n"));
    EXPECT_EQ(home.errorPlaces(), QStringList());
    EXPECT_TRUE(linkedTo(sibling));
    EXPECT_EQ(index(), kExpectedIndex);
    EXPECT_EQ(work(), QStringList{QStringLiteral("|55||") + folder + QStringLiteral("/|")});
}

INSTANTIATE_TEST_SUITE_P(ClosingSeparator, SiblingFolderTest, ::testing::Values("\\", "/", ""));

TEST_F(AnlBasicInfoTest, UnusableSiblingDatabaseIsReportedOnceAndTheDummyLinked) {
    const QString good = home.file(QStringLiteral("good"));
    makeSibling(good);
    load(basicInfo("\"ApplyDataID\",55\r\n\"LedraDataPath\",\"" + good.toUtf8() + "\"\r\n"));
    home.exec(home.database(), "DELETE FROM tblIndex");

    // A folder that does not exist, then one whose Ledra.mdb is a Jet file cut short after its header.
    const QString missing = home.file(QStringLiteral("missing"));
    load(basicInfo("\"ApplyDataID\",55\r\n\"LedraDataPath\",\"" + missing.toUtf8() + "\"\r\n"));
    EXPECT_EQ(home.errorPlaces(), QStringList{QStringLiteral("LoadData")});
    EXPECT_TRUE(home.messageTexts().contains(missing + QStringLiteral("/Ledra.mdb")));
    EXPECT_TRUE(linkedTo(home.file(QStringLiteral("Ledra_dummy.mdb"))));
    EXPECT_EQ(index(), QStringList());

    const QString foreign = home.file(QStringLiteral("foreign"));
    QDir().mkpath(foreign);
    home.write(QStringLiteral("foreign/Ledra.mdb"), QByteArray("\x00\x01\x00\x00Standard Jet DB\x00", 20));
    load(basicInfo("\"ApplyDataID\",55\r\n\"LedraDataPath\",\"" + foreign.toUtf8() + "\"\r\n"));
    EXPECT_EQ(home.errorPlaces(), (QStringList{QStringLiteral("LoadData"), QStringLiteral("LoadData")}));
    EXPECT_TRUE(linkedTo(home.file(QStringLiteral("Ledra_dummy.mdb"))));
    EXPECT_EQ(index(), QStringList());
    EXPECT_EQ(work(), QStringList{QStringLiteral("|55||") + foreign + QStringLiteral("/|")});
}

}  // namespace
}  // namespace kelvary
