// Printing of plain text: its lines on A4 portrait pages, the only layout
// being the line breaks of the text itself.
#pragma once

#include <QString>

class QPrinter;

namespace kelvary {

// Prints the text line by line, then one empty line, on the printer's
// pages in the font family given. The font is as large as the usual ten points
// allow while the widest line still fits the page width, so that a value
// line keeps its amount beside its label; only a line too wide even at the
// smallest readable size continues on the next line. A full page continues
// on a new one, so nothing is cut. Returns the number of pages printed;
// raises VbError when the printer does not start.
int printTextLines(const QString& text, const QString& fontFamily, QPrinter& printer);

}  // namespace kelvary
