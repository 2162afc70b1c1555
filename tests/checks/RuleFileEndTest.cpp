// Where a rule file of the statement sums was cut off, on small files written
// out by hand (records 400 to 402; ASCII, which CP932 reads as itself).
#include "checks/RuleFileEnd.h"

#include "platform/VbError.h"
#include "support/TestSupport.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace kelvary {
namespace {

const QByteArray kRecord400 = ":A400\r\nT\r\nS\r\nG\r\n2N,3T\r\n1,2\r\n";
const QByteArray kRecord401 = ":a401 \r\nT\r\nS\r\nG\r\n1N,5T\r\n4\r\n";
const QByteArray kRecord402 = ":A402\r\nT\r\nS\r\nG\r\n3N,9T\r\n6,-7,8\r\n";

std::optional<int> cutOffOf(const QByteArray& bytes) {
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("DbtData0607H.txt"));
    test::writeFile(path, bytes);
    return firstRuleCutOff(path, 400, 402);
}

TEST(RuleFileEnd, WholeFileHoldsEveryRecord) {
    EXPECT_EQ(cutOffOf(kRecord400 + kRecord401 + kRecord402), std::nullopt);
    // Line feeds alone end lines as well.
    EXPECT_EQ(cutOffOf(QByteArray(kRecord400 + kRecord401 + kRecord402).replace("\r\n", "\n")), std::nullopt);
    // The last record without the line break after its last term.
    EXPECT_EQ(cutOffOf(kRecord400 + kRecord401 + ":A402\r\nT\r\nS\r\nG\r\n3N,9T\r\n6,-7,8"), std::nullopt);
    EXPECT_EQ(cutOffOf(kRecord400 + kRecord401 + ":A402\r\nT\r\nS\r\nG\r\n3N,9T\r\n6,-7,8\r"), std::nullopt);
}

TEST(RuleFileEnd, FileEndingEarlyLosesTheRecordsAfterTheLastOneItHolds) {
    // Ends between records: 402 is gone.
    EXPECT_EQ(cutOffOf(kRecord400 + kRecord401), 402);
    // Ends inside the terms of 401: 401 itself is left to meet the end.
    EXPECT_EQ(cutOffOf(kRecord400 + ":A401\r\nT\r\nS\r\nG\r\n2N,5T\r\n4,"), 402);
    // Ends inside the labels of 401.
    EXPECT_EQ(cutOffOf(kRecord400 + ":A401\r\nT\r\nS"), 402);
    // Nothing of the checks' records at all.
    EXPECT_EQ(cutOffOf("\r\n"), 400);
    EXPECT_EQ(cutOffOf(":A399\r\nT\r\nS\r\nG\r\n0N,0T\r\n"), 400);
}

TEST(RuleFileEnd, InsideACharacterOrMissingIsAnError) {
    // A CP932 lead byte (0x82) without its trail byte at the very end.
    EXPECT_THROW(cutOffOf(kRecord400 + ":A401\r\n\x82"), VbError);
    QTemporaryDir dir;
    try {
        firstRuleCutOff(dir.filePath(QStringLiteral("DbtData0607H.txt")), 400, 402);
        FAIL() << "a missing file was read";
    } catch (const VbError& e) {
        EXPECT_EQ(e.number(), 53);
    }
}

}  // namespace
}  // namespace kelvary
