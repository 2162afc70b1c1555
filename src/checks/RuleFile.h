// The sum rules beside the program (DbtData0607H.txt, DbtData0607K.txt): a
// record ":A<number>" followed by its title, the label of the sum, the label
// of the item the sum must match, the counts line ("<terms>件,<target>番")
// and the signed item codes to add up.
#pragma once

#include "platform/SequentialInput.h"

#include <QString>

#include <cstdint>
#include <vector>

namespace kelvary {

struct SumRule {
    QString title;
    QString sumLabel;
    QString targetLabel;
    std::int32_t target = 0;
    long termCount = 0;                 // as the record announces it
    std::vector<std::int32_t> terms;    // negative: the item is subtracted
    bool cutShort = false;              // the file ended before termCount terms
};

// Moves the file to the line after the record's header (":A400", letters in
// any case, blanks around ignored). Raises VbError 62 when there is none.
void seekSumRule(SequentialInput& file, const QString& key);

// Reads the record the file stands at (after seekSumRule). A file that ends
// inside the terms gives the terms read so far with cutShort set; a file that
// ends before the counts raises VbError 62.
SumRule readSumRule(SequentialInput& file);

}  // namespace kelvary
