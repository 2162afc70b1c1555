// libFuzzer main for the application data file, read field by field, line by line and section by section.
#include "fuzz/FuzzEntries.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    return kelvary::fuzz::fuzzSequentialInput(data, size);
}
