// Printing of a problem list: plain text lines on A4 portrait pages, the
// only layout being the line breaks of the text itself.
#pragma once

#include <QString>

class QPrinter;

namespace kelvary {

// Prints the list text line by line, then one empty line, on the printer's
// pages in "ＭＳ ゴシック": a line too wide for the page continues on the
// next line and a full page continues on a new one, so nothing is cut.
// Returns the number of pages printed.
int printReportLines(const QString& text, QPrinter& printer);

}  // namespace kelvary
