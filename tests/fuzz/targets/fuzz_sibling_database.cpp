// libFuzzer main for sibling databases linked, indexed, copied and encoded.
#include "fuzz/FuzzEntries.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    return kelvary::fuzz::fuzzSiblingDatabase(data, size);
}
