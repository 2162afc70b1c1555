// A proof of a layout for the people who draw them: every page of the layout
// with each field showing its own name (a group's sub-fields as
// "group.name"), image fields as framed names, so that positions can be
// checked against what the page builders write.
#pragma once

#include <QString>

namespace kelvary {

// Writes the proof of the layout file as a PDF; raises VbError when the
// layout cannot be read or the PDF cannot be written.
void writeLayoutProof(const QString& layoutPath, const QString& pdfPath);

}  // namespace kelvary
