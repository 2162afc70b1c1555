// Printing of a problem list: plain text lines on A4 portrait pages, the
// only layout being the line breaks of the text itself.
#pragma once

#include <QString>

class QPrinter;

namespace kelvary {

// Prints the list text line by line, then one empty line, on the printer's
// pages in "ＭＳ ゴシック". The font is as large as the usual ten points
// allow while the widest line still fits the page width, so that a value
// line keeps its amount beside its label; only a line too wide even at the
// smallest readable size continues on the next line. A full page continues
// on a new one, so nothing is cut. Returns the number of pages printed;
// raises VbError when the printer does not start.
int printReportLines(const QString& text, QPrinter& printer);

}  // namespace kelvary
