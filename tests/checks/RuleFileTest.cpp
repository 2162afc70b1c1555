// The sum-rule reader on rule records written out byte by byte, and where a
// rule file was cut off (tests/data/checks/RuleFileEnd.tsv).
#include "checks/RuleFile.h"
#include "checks/RuleFileEnd.h"

#include "platform/VbError.h"
#include "support/TestSupport.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

namespace kelvary {
namespace {

class RuleFileTest : public ::testing::Test {
protected:
    // The bytes as a rule file, opened for reading.
    SequentialInput open(const QByteArray& bytes) {
        const QString path = dir_.filePath(QStringLiteral("DbtData0607H.txt"));
        test::writeFile(path, bytes);
        return SequentialInput(path);
    }

    QTemporaryDir dir_;
};

// ":A401" then 合計 / 計 / 対象 and "3件,30番" with terms 16,-17,18, in CP932.
const char* const kRecord401 =
    "3a 41 34 30 30 0d 0a 78 0d 0a 79 0d 0a 7a 0d 0a 31 8c 8f 2c 31 94 d4 0d 0a 31 0d 0a"  // :A400 x y z 1件,1番 1
    "3a 61 34 30 31 20 0d 0a"                                                               // ":a401 " (case, blank)
    "8d 87 8c 76 0d 0a 8c 76 0d 0a 91 ce 8f db 0d 0a"                                       // 合計 計 対象
    "33 8c 8f 2c 33 30 94 d4 0d 0a 31 36 2c 2d 31 37 2c 31 38 0d 0a";                        // 3件,30番 16,-17,18

TEST_F(RuleFileTest, FindsTheRecordWhateverItsCaseAndReadsItsParts) {
    SequentialInput file = open(test::hexBytes(kRecord401));
    seekSumRule(file, QStringLiteral("A401"));
    const SumRule rule = readSumRule(file);
    EXPECT_EQ(rule.title, QStringLiteral("合計"));
    EXPECT_EQ(rule.sumLabel, QStringLiteral("計"));
    EXPECT_EQ(rule.targetLabel, QStringLiteral("対象"));
    EXPECT_EQ(rule.termCount, 3);
    EXPECT_EQ(rule.target, 30);
    EXPECT_EQ(rule.terms, (std::vector<std::int32_t>{16, -17, 18}));
    EXPECT_FALSE(rule.cutShort);
}

TEST_F(RuleFileTest, MissingRecordAndMissingCountsAreInputPastEnd) {
    {
        SequentialInput file = open(test::hexBytes(kRecord401));
        EXPECT_EQ(test::raised([&] { seekSumRule(file, QStringLiteral("A402")); }).number, vberr::InputPastEnd);
    }
    {
        // ":A400" and its title only.
        SequentialInput file = open(test::hexBytes("3a 41 34 30 30 0d 0a 78 0d 0a"));
        seekSumRule(file, QStringLiteral("A400"));
        EXPECT_EQ(test::raised([&] { (void)readSumRule(file); }).number, vberr::InputPastEnd);
    }
}

TEST_F(RuleFileTest, AFileEndingEarlyLosesTheRecordsAfterTheLastOneItHolds) {
    const QList<QStringList> rows = test::dataTable(QStringLiteral("checks/RuleFileEnd.tsv"));
    ASSERT_EQ(rows.size(), 10);
    const QString path = dir_.filePath(QStringLiteral("DbtData0607H.txt"));
    for (const QStringList& row : rows) {
        ASSERT_EQ(row.size(), 3) << "line " << row[0].toStdString();
        SCOPED_TRACE("RuleFileEnd.tsv line " + row[0].toStdString());
        test::writeFile(path, row[1].toLatin1());
        if (row[2] == QLatin1String("error")) {
            EXPECT_THROW(firstRuleCutOff(path, 400, 402), VbError);
        } else {
            const std::optional<int> cutOff = firstRuleCutOff(path, 400, 402);
            EXPECT_EQ(cutOff ? QString::number(*cutOff) : QStringLiteral("none"), row[2]);
        }
    }
    QFile::remove(path);
    EXPECT_EQ(test::raised([&] { firstRuleCutOff(path, 400, 402); }).number, vberr::FileNotFound);
}

}  // namespace
}  // namespace kelvary
