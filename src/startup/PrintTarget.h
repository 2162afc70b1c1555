// Where the run's printed pages go: the system's default printer, or a PDF
// file standing in for the paper (--print-to). Decided once where the run
// starts and handed to the windows that print through the user-interface
// port, so that no window reads the command line for it.
#pragma once

#include <QString>

#include <utility>

namespace kelvary {

class PrintTarget {
public:
    static PrintTarget defaultPrinter() { return PrintTarget(QString()); }
    // An empty path names no file: that is the printer.
    static PrintTarget pdfFile(QString path) { return PrintTarget(std::move(path)); }

    bool isPdfFile() const { return !pdfPath_.isEmpty(); }
    // The file standing in for the paper; empty for the printer.
    const QString& pdfPath() const { return pdfPath_; }

private:
    explicit PrintTarget(QString pdfPath) : pdfPath_(std::move(pdfPath)) {}
    QString pdfPath_;
};

}  // namespace kelvary
