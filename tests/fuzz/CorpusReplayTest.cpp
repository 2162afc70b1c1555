// Every seed of every fuzz target, and every crash input kept among them,
// fed through its fuzz entry: a refusal by VbError is fine, any other
// exception (a broken promise of the reader included) fails the test.
#include "fuzz/FuzzEntries.h"

#include "support/TestSupport.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFileInfo>

#include <exception>

namespace kelvary::fuzz {
namespace {

using Entry = int (*)(const std::uint8_t*, std::size_t);

struct Target {
    const char* corpus;
    Entry entry;
};

void PrintTo(const Target& target, std::ostream* os) { *os << target.corpus; }

class CorpusReplay : public ::testing::TestWithParam<Target> {};

TEST_P(CorpusReplay, EverySeedIsReadOrRefusedInOrder) {
    const QDir corpus(QStringLiteral(KELVARY_SOURCE_DIR "/tests/fuzz/corpus/") + QLatin1String(GetParam().corpus));
    const QFileInfoList seeds = corpus.entryInfoList(QDir::Files, QDir::Name);
    ASSERT_GE(seeds.size(), 3) << "too few seeds in " << corpus.path().toStdString();
    for (const QFileInfo& seed : seeds) {
        const QByteArray bytes = test::readFile(seed.filePath());
        ASSERT_FALSE(bytes.isEmpty() && seed.size() > 0) << seed.fileName().toStdString();
        try {
            EXPECT_EQ(GetParam().entry(reinterpret_cast<const std::uint8_t*>(bytes.constData()),
                                       static_cast<std::size_t>(bytes.size())),
                      0)
                << seed.fileName().toStdString();
        } catch (const std::exception& e) {
            ADD_FAILURE() << seed.fileName().toStdString() << ": " << e.what();
        } catch (...) {
            ADD_FAILURE() << seed.fileName().toStdString() << ": an exception of unknown type";
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Targets, CorpusReplay,
                         ::testing::Values(Target{"sequential_input", fuzzSequentialInput},
                                           Target{"profile", fuzzProfile}, Target{"rule_file", fuzzRuleFile},
                                           Target{"layout", fuzzLayout}, Target{"jet_sql", fuzzJetSql},
                                           Target{"sibling_database", fuzzSiblingDatabase},
                                           Target{"sql_text", fuzzSqlText}),
                         [](const ::testing::TestParamInfo<Target>& info) { return std::string(info.param.corpus); });

}  // namespace
}  // namespace kelvary::fuzz
