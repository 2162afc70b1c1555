// Where pages go: a PDF file, written beside its target and moved into place
// only when complete, or a printer.
#pragma once

#include "platform/LayoutRenderer.h"

#include <QString>

#include <memory>
#include <vector>

class QPagedPaintDevice;
class QPainter;
class QPdfWriter;
class QSaveFile;

namespace kelvary {

// A PDF file in the making. Pages go to a temporary file in the target's
// folder; commit() moves it over the target. A writer destroyed without
// commit() removes its temporary file and leaves any earlier file alone, so
// a failed or cancelled run never leaves half a PDF.
class PdfFileWriter {
public:
    // Raises VbError when the temporary file cannot be created.
    PdfFileWriter(const QString& path, const QString& title, const QString& creator);
    ~PdfFileWriter();
    PdfFileWriter(const PdfFileWriter&) = delete;
    PdfFileWriter& operator=(const PdfFileWriter&) = delete;

    // A page of the open document, drawn into the file as it stands.
    void addPage(const LayoutDocument& document, int pageNumber);
    void addPage(const RecordedPage& page);
    int pageCount() const { return pages_; }
    const QString& path() const { return path_; }

    // Finishes the file and puts it in place; raises VbError on failure.
    // A file with no pages is not written (the earlier file stays).
    void commit();

private:
    // Starts a page on that paper; returns the device's pixels per millimetre.
    double beginPage(const QSizeF& paperMm);

    QString path_;
    std::unique_ptr<QSaveFile> file_;
    std::unique_ptr<QPdfWriter> writer_;
    std::unique_ptr<QPainter> painter_;
    int pages_ = 0;
};

// Sends the pages to a printer (or any paged device) as one job.
void printRecordedPages(QPagedPaintDevice& device, const std::vector<RecordedPage>& pages);

}  // namespace kelvary
