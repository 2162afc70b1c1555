// libFuzzer main for the statement builder: values of every column type put
// into one INSERT statement, run, and read back.
#include "fuzz/FuzzEntries.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    return kelvary::fuzz::fuzzSqlText(data, size);
}
