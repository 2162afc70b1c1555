// Value helpers and application routines: the small routines every payload
// and printed form leans on.
#include "platform/AppObject.h"
#include "startup/FormEdition.h"
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

using IniFolder = test::ProgramFolder;

TEST(gvarGetIniData, TrimsTrailingBlanksAndMissingIsEmpty) {
    IniFolder folder("[UserInfo]\r\nUserID=123   \r\n");
    EXPECT_EQ(gvarGetIniData(QStringLiteral("UserID"), QStringLiteral("UserInfo")).text(), QStringLiteral("123"));
    EXPECT_EQ(gvarGetIniData(QStringLiteral("Nothing"), QStringLiteral("UserInfo")).text(), QString());
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

// Only the date 2008-04-01 itself, held as a date, is the current edition;
// the same day as text or with a time, and every other date, are earlier.
TEST(FormEdition, ReadFromTheEnforceDate) {
    EXPECT_EQ(formEditionFromEnforceDate(Variant(QDate(2008, 4, 1))), FormEdition::Form200804);
    for (const Variant& other : {Variant(QDate(2004, 3, 1)), Variant(QDate(2008, 3, 31)), Variant(QDate(2010, 4, 1)),
                                 Variant(VbDate{QDate(2008, 4, 1), 1}), Variant(QStringLiteral("2008/04/01")),
                                 Variant::null(), Variant()})
        EXPECT_EQ(formEditionFromEnforceDate(other), FormEdition::Earlier) << other.text().toStdString();
}

// Each edition names layouts the program folder holds, and not the other's.
TEST(FormEdition, LayoutsAreTheProgramFoldersOwn) {
    const QString folder = test::templateDir() + QStringLiteral("/PrintFile/");
    for (FormEdition edition : {FormEdition::Form200804, FormEdition::Earlier})
        for (const QString& layout : {applicationLayoutFile(edition), supplementLayoutFile(edition)})
            EXPECT_TRUE(QFile::exists(folder + layout)) << layout.toStdString();
    EXPECT_NE(applicationLayoutFile(FormEdition::Form200804), applicationLayoutFile(FormEdition::Earlier));
    EXPECT_NE(supplementLayoutFile(FormEdition::Form200804), supplementLayoutFile(FormEdition::Earlier));
    EXPECT_TRUE(offersPdf(FormEdition::Form200804));
    EXPECT_FALSE(offersPdf(FormEdition::Earlier));
}
