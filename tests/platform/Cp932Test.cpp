// CP932 codec: bytes of known characters written out by hand from the
// Windows-31J table, the characters where it differs from plain Shift_JIS,
// the best-fit and "?" behaviour of Windows, and the strict decode.
#include "platform/Cp932.h"

#include "support/TestSupport.h"

#include <gtest/gtest.h>

#include <thread>

namespace kelvary {
namespace {

using test::hexBytes;

// The cases of tests/data/platform/Cp932.tsv.
TEST(Cp932, EveryCaseOfTheTable) {
    const QList<QStringList> rows = test::dataTable(QStringLiteral("platform/Cp932.tsv"));
    ASSERT_EQ(rows.size(), 25);
    for (const QStringList& row : rows) {
        ASSERT_EQ(row.size(), 4) << "line " << row[0].toStdString();
        SCOPED_TRACE("Cp932.tsv line " + row[0].toStdString());
        const bool decode = row[1] == QLatin1String("decode");
        const QString text = decode ? row[3] : row[2];
        const QByteArray bytes = hexBytes((decode ? row[2] : row[3]).toLatin1().constData());
        if (row[1] != QLatin1String("decode")) EXPECT_EQ(cp932Encode(text), bytes);
        if (row[1] != QLatin1String("encode")) EXPECT_EQ(cp932Decode(bytes), text);
    }
}

TEST(Cp932, EmptyTextsAndByteLengths) {
    EXPECT_TRUE(cp932Encode(QString()).isEmpty());
    EXPECT_TRUE(cp932Decode(QByteArray()).isEmpty());
    EXPECT_EQ(cp932ByteLength(QStringLiteral("a한b")), 3);
}

TEST(Cp932, StrictDecodeAcceptsOnlyValidBytes) {
    QString text;
    EXPECT_TRUE(cp932DecodeStrict(hexBytes("82 a0 81 7c 41"), text));
    EXPECT_EQ(text, QStringLiteral("あ－A"));

    // A UTF-8 byte order mark: EF is not a CP932 lead byte row.
    EXPECT_FALSE(cp932DecodeStrict(hexBytes("ef bb bf 41"), text));
    EXPECT_TRUE(text.isEmpty());
    // Cut off after a lead byte.
    EXPECT_FALSE(cp932DecodeStrict(hexBytes("82 a0 82"), text));

    // The lenient decoder still works after a strict failure on the same thread.
    EXPECT_EQ(cp932Decode(hexBytes("82 a0")), QStringLiteral("あ"));
}

TEST(Cp932, WorksOnOtherThreads) {
    QByteArray encoded;
    long length = 0;
    std::thread worker([&] {
        encoded = cp932Encode(QStringLiteral("㈱"));
        length = cp932ByteLength(QStringLiteral("ｱあ"));
    });
    worker.join();
    EXPECT_EQ(encoded, hexBytes("87 8a"));
    EXPECT_EQ(length, 3);
}

}  // namespace
}  // namespace kelvary
