// Entry points of the fuzz targets, one per reader of outside input. The
// libFuzzer mains and the corpus replay test both call these, so a crash input
// kept in a seed corpus is replayed by the ordinary test suite.
//
// Each entry returns 0. An orderly refusal (VbError) is swallowed; a broken
// promise of the reader is thrown as FuzzFinding; anything else escapes too.
#pragma once

#include <cstddef>
#include <cstdint>
#include <stdexcept>

namespace kelvary::fuzz {

// Raised when a reader accepted the input but broke one of its own promises
// (a value written and not read back, a loop that does not advance ...).
class FuzzFinding : public std::logic_error {
public:
    using std::logic_error::logic_error;
};

int fuzzSequentialInput(const std::uint8_t* data, std::size_t size);
int fuzzProfile(const std::uint8_t* data, std::size_t size);
int fuzzRuleFile(const std::uint8_t* data, std::size_t size);
int fuzzLayout(const std::uint8_t* data, std::size_t size);
int fuzzJetSql(const std::uint8_t* data, std::size_t size);
int fuzzSiblingDatabase(const std::uint8_t* data, std::size_t size);
int fuzzSqlText(const std::uint8_t* data, std::size_t size);

}  // namespace kelvary::fuzz
