// libFuzzer main for the sum rule files beside the program.
#include "fuzz/FuzzEntries.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    return kelvary::fuzz::fuzzRuleFile(data, size);
}
