// libFuzzer main for layout (.w30) files.
#include "fuzz/FuzzEntries.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    return kelvary::fuzz::fuzzLayout(data, size);
}
