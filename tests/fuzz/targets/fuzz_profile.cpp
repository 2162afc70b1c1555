// libFuzzer main for private-profile (INI) files: lookups, a write and its read-back.
#include "fuzz/FuzzEntries.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    return kelvary::fuzz::fuzzProfile(data, size);
}
