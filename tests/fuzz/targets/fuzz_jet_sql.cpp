// libFuzzer main for Jet SQL texts translated for SQLite and prepared there.
#include "fuzz/FuzzEntries.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    return kelvary::fuzz::fuzzJetSql(data, size);
}
