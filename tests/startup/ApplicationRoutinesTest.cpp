// Value helpers and application routines: the small routines every payload
// and printed form leans on.
#include "platform/AppObject.h"
#include "startup/mdlFunctionApplication.h"
#include "startup/mdlFunctionStandard.h"
#include "support/RecordingUi.h"
#include "support/TestSupport.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QLineEdit>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace kelvary;

TEST(gvarCheckData, ModesReplaceOnlyWhatTheySay) {
    const Variant fallback(QStringLiteral("既定"));
    EXPECT_EQ(gvarCheckData(0, Variant::null(), fallback), fallback);
    EXPECT_EQ(gvarCheckData(0, Variant(QString()), fallback), Variant(QString()));
    EXPECT_TRUE(gvarCheckData(1, Variant::null(), fallback).isNull());
    EXPECT_EQ(gvarCheckData(1, Variant(QString()), fallback), fallback);
    EXPECT_EQ(gvarCheckData(2, Variant::null(), fallback), fallback);
    EXPECT_EQ(gvarCheckData(2, Variant(QString()), fallback), fallback);
    EXPECT_EQ(gvarCheckData(2, Variant(QStringLiteral("a")), fallback), Variant(QStringLiteral("a")));
    EXPECT_EQ(gvarCheckData(3, Variant(0), fallback), fallback);
    EXPECT_EQ(gvarCheckData(3, Variant(QStringLiteral("0")), fallback), fallback);
    EXPECT_EQ(gvarCheckData(3, Variant(7), fallback), Variant(7));
    EXPECT_EQ(gvarCheckData(9, Variant::null(), fallback), Variant::null());
}

TEST(glngLen, CountsCp932Bytes) {
    EXPECT_EQ(glngLen(Variant(QStringLiteral("ＡＢ"))), 4);
    EXPECT_EQ(glngLen(Variant(QStringLiteral("AB"))), 2);
    EXPECT_EQ(glngLen(Variant(QStringLiteral("ｱｲ"))), 2);  // half-width katakana: one byte each
    EXPECT_EQ(glngLen(Variant::null()), 0);
    EXPECT_EQ(glngLen(Variant(1234)), 4);
}

TEST(gvarEraDateText, PaddedNumbersAndTheBlankTemplateForNull) {
    EXPECT_EQ(gvarEraDateText(Variant(QDate(2008, 4, 1)), 2).text(), QStringLiteral("平成20年 4月 1日"));
    EXPECT_EQ(gvarEraDateText(Variant(QDate(2019, 5, 1)), 2).text(), QStringLiteral("令和 1年 5月 1日"));
    EXPECT_EQ(gvarEraDateText(Variant(QDate(2019, 4, 30)), 2).text(), QStringLiteral("平成31年 4月30日"));
    EXPECT_EQ(gvarEraDateText(Variant::null(), 2).text(), QStringLiteral("      年  月  日"));
    EXPECT_EQ(gvarEraDateText(Variant::null(), 3).text(), QStringLiteral("       年   月   日"));
}

TEST(gstrEraChar, InitialOfTheEra) {
    EXPECT_EQ(gstrEraChar(Variant(QDate(1989, 1, 7))), QStringLiteral("S"));
    EXPECT_EQ(gstrEraChar(Variant(QDate(1989, 1, 8))), QStringLiteral("H"));
    EXPECT_EQ(gstrEraChar(Variant(QDate(2019, 5, 1))), QStringLiteral("R"));
    EXPECT_EQ(gstrEraChar(Variant::null()), QString());
}

TEST(gvarConvUnitType, TruncatesTowardZero) {
    Variant a(1999.0);
    EXPECT_EQ(gvarConvUnitType(a).toDouble(), 1.0);
    EXPECT_EQ(a.toDouble(), 1.0);  // replaced in place
    Variant b(-1999.0);
    EXPECT_EQ(gvarConvUnitType(b).toDouble(), -1.0);
    Variant c{QString()};
    EXPECT_EQ(gvarConvUnitType(c), Variant(QString()));
    Variant d = Variant::null();
    EXPECT_TRUE(gvarConvUnitType(d).isNull());
}

TEST(glngCeilDiv, PiecesNeeded) {
    EXPECT_EQ(glngCeilDiv(0, 100), 0);
    EXPECT_EQ(glngCeilDiv(100, 100), 1);
    EXPECT_EQ(glngCeilDiv(101, 100), 2);
    EXPECT_EQ(glngCeilDiv(5, 0), 0);
}

TEST(gstrFSDocMaster, KnownEditionsOnly) {
    EXPECT_EQ(gstrFSDocMaster(Variant::null()), QStringLiteral("tblFSDocMaster"));
    EXPECT_EQ(gstrFSDocMaster(Variant(QString())), QStringLiteral("tblFSDocMaster"));
    EXPECT_EQ(gstrFSDocMaster(Variant(QStringLiteral("2004/04/01"))), QStringLiteral("tblFSDocMaster"));
    EXPECT_EQ(gstrFSDocMaster(Variant(QStringLiteral("2006/07/01"))), QStringLiteral("tblFSDocMaster06"));
    EXPECT_EQ(gstrFSDocMaster(Variant(QStringLiteral("2008/04/01"))), QString());
}

TEST(gvarCalcEnforceDate, EditionCodes) {
    const Variant fallback(QDate(2004, 3, 1));
    EXPECT_EQ(gvarCalcEnforceDate(fallback, Variant(QStringLiteral("200804"))), Variant(QDate(2008, 4, 1)));
    EXPECT_EQ(gvarCalcEnforceDate(fallback, Variant(QStringLiteral("201004"))), Variant(QDate(2010, 4, 1)));
    EXPECT_EQ(gvarCalcEnforceDate(fallback, Variant(QStringLiteral("201304"))), Variant(QDate(2013, 4, 1)));
    EXPECT_EQ(gvarCalcEnforceDate(fallback, Variant(QStringLiteral("200404"))), fallback);
    EXPECT_EQ(gvarCalcEnforceDate(fallback, Variant::null()), fallback);
}

TEST(gstrGetFileNameFromFullPath, LastPart) {
    EXPECT_EQ(gstrGetFileNameFromFullPath(QStringLiteral("C:\\Tools\\App\\a.exe")), QStringLiteral("a.exe"));
    EXPECT_EQ(gstrGetFileNameFromFullPath(QStringLiteral("a.exe")), QStringLiteral("a.exe"));
}

TEST(gstrAppVersion, JoinedWithFullStopAndBlank) {
    EXPECT_TRUE(gstrAppVersion().contains(QRegularExpression(QStringLiteral("^\\d+\\. \\d+\\. \\d+$"))));
}

using IniFolder = test::ProgramFolder;

TEST(gstrMakeProxyString, FourOrFiveLines) {
    {
        IniFolder folder("[UserInfo]\r\nUserAddress=Tokyo\r\nUserName=Agent\r\nUserName2=\r\nUserTel=03-1234\r\n");
        EXPECT_EQ(gstrMakeProxyString(),
                  QStringLiteral("(上記代理人)\r\nTokyo\r\nAgent\r\n電話番号  03-1234"));
    }
    {
        IniFolder folder("[UserInfo]\r\nUserAddress=Tokyo\r\nUserName=Agent\r\nUserName2=Office\r\nUserTel=03\r\n");
        EXPECT_EQ(gstrMakeProxyString(),
                  QStringLiteral("(上記代理人)\r\nTokyo\r\nAgent\r\nOffice\r\n電話番号  03"));
    }
}

TEST(gvarGetIniData, TrimsTrailingBlanksAndMissingIsEmpty) {
    IniFolder folder("[UserInfo]\r\nUserID=123   \r\n");
    EXPECT_EQ(gvarGetIniData(QStringLiteral("UserID"), QStringLiteral("UserInfo")).text(), QStringLiteral("123"));
    EXPECT_EQ(gvarGetIniData(QStringLiteral("Nothing"), QStringLiteral("UserInfo")).text(), QString());
}

TEST(gstrProgramInfo, FolderForms) {
    app::setPath(QStringLiteral("/opt/Tools/App"));
    EXPECT_EQ(gstrProgramInfo(0), QStringLiteral("/opt/Tools/App/"));
    EXPECT_EQ(gstrProgramInfo(3), QStringLiteral("/opt/Tools/App"));
    EXPECT_EQ(gstrProgramInfo(4), QStringLiteral("/opt/Tools/"));
    EXPECT_EQ(gstrProgramInfo(2), QStringLiteral("kelvary"));
    app::setPath(QString());
}

TEST(gblnCheckExistFile, FilesAndFolders) {
    QTemporaryDir dir;
    test::writeFile(dir.filePath(QStringLiteral("a.txt")), QByteArray());
    EXPECT_TRUE(gblnCheckExistFile(dir.filePath(QStringLiteral("a.txt"))));
    EXPECT_FALSE(gblnCheckExistFile(dir.filePath(QStringLiteral("b.txt"))));
    EXPECT_FALSE(gblnCheckExistFile(QString()));
    EXPECT_FALSE(gblnCheckExistFile(dir.path()));  // a folder needs the directory attribute
    EXPECT_TRUE(gblnCheckExistFile(dir.path(), vbDirectory));
    EXPECT_TRUE(gblnCheckExistFile(dir.filePath(QStringLiteral("*.txt"))));
}

TEST(ListControls, ComboSelectionByItemDataAndBack) {
    QComboBox combo;
    combo.addItem(QStringLiteral("北海道"), 1);
    combo.addItem(QStringLiteral("東京都"), 13);
    gLetDataToControl(&combo, Variant(13), 1);
    EXPECT_EQ(combo.currentText(), QStringLiteral("東京都"));
    EXPECT_EQ(gvarGetComboBoxValue(&combo), Variant(13));
}

TEST(ListControls, TextAndCheckKinds) {
    test::RecordingUiGuard ui;
    QLineEdit edit;
    gLetDataToControl(&edit, Variant::null(), 0);
    EXPECT_EQ(edit.text(), QString());
    gLetDataToControl(&edit, Variant(QStringLiteral("山田")), 6);
    EXPECT_EQ(edit.text(), QStringLiteral("山田"));
    QCheckBox box;
    gLetDataToControl(&box, Variant(true), 3);
    EXPECT_TRUE(box.isChecked());
    gLetDataToControl(&box, Variant(1), 3);  // only True (-1) checks the box
    EXPECT_FALSE(box.isChecked());
    gLetDataToControl(&box, Variant(-1), 3);
    EXPECT_TRUE(box.isChecked());
}
