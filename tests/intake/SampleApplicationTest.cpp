// The bundled sample application read as start-up reads it: the period index
// from its sibling database, then the application record and the agent's
// details. The sample must load cleanly from the built program folder.
#include "intake/clsAnlBasicInfo.h"
#include "intake/clsApply2Data.h"

#include "IntakeHome.h"

#include <gtest/gtest.h>

namespace kelvary {
namespace {

using test::hexBytes;
using test::IntakeHome;

TEST(SampleApplicationTest, LoadsWithoutAnyReport) {
    IntakeHome home;
    const QString file = home.file(QStringLiteral("sample/app.dat"));

    clsAnlBasicInfo basicInfo;
    basicInfo.LoadData(file);
    EXPECT_EQ(basicInfo.MainDataCode(), 1001);
    const std::int32_t mainDataCode = clsApply2Data().LoadData(file);

    EXPECT_EQ(home.messageTexts(), QString());
    EXPECT_EQ(mainDataCode, 1001);
    // The sibling's applicant 3 has the periods 38 to 40 under FSDataCode 7, 12, 15.
    EXPECT_EQ(home.rows("SELECT IndexID, MainDataCode, LinkCode, FYearNumber FROM tblIndex ORDER BY IndexID"),
              (QStringList{QStringLiteral("1|3|7|38.0"), QStringLiteral("2|3|12|39.0"),
                           QStringLiteral("3|3|15|40.0")}));
    EXPECT_EQ(home.rows("SELECT APDataCode, MainDataCode, EnforceDate, TRName, Distinction, BaseDate "
                        "FROM tmpAPData"),
              QStringList{QStringLiteral("1|1001|2008-04-01|（株）北斗建設|1|2009-03-31")});
    EXPECT_TRUE(gblnRepresentation);
    EXPECT_EQ(glngSinseiType, 1);
    // 行政書士 (8d 73 90 ad 8f 91 8e 6d) begins the agent's name.
    EXPECT_TRUE(home.read(QStringLiteral("UserData.ini")).contains("UserName=" + hexBytes("8d 73 90 ad 8f 91 8e 6d")));
}

}  // namespace
}  // namespace kelvary
