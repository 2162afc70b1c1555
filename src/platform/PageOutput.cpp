// PDF files and print jobs.
#include "platform/PageOutput.h"

#include "platform/VbError.h"

#include <QFileInfo>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>

namespace kelvary {

namespace {

QPageLayout layoutFor(const QSizeF& paperMm) {
    const bool landscape = paperMm.width() > paperMm.height();
    const QSizeF portrait = landscape ? paperMm.transposed() : paperMm;
    return QPageLayout(QPageSize(portrait, QPageSize::Millimeter), landscape ? QPageLayout::Landscape
                                                                             : QPageLayout::Portrait,
                       QMarginsF(0, 0, 0, 0), QPageLayout::Millimeter);
}

// Pixels per millimetre of the device's full page.
double pixelsPerMm(const QPagedPaintDevice& device, const QSizeF& paperMm) {
    return device.width() / paperMm.width();
}

// Why the file cannot be made, in the user's words where the cause is plain.
QString whyNotCreated(const QString& path, const QString& systemText) {
    const QFileInfo target(path);
    const QFileInfo folder(target.absolutePath());
    if (!folder.isDir()) return QStringLiteral("保存先のフォルダーがありません。");
    if (target.isDir()) return QStringLiteral("同じ名前のフォルダーがあります。");
    if (target.exists() && !target.isWritable()) return QStringLiteral("同じ名前のファイルが書き込み禁止になっています。");
    if (!folder.isWritable()) return QStringLiteral("保存先のフォルダーに書き込む権限がありません。");
    return QStringLiteral("(") + systemText + QStringLiteral(")");
}

}  // namespace

PdfFileWriter::PdfFileWriter(const QString& path, const QString& title, const QString& creator)
    : path_(path), file_(std::make_unique<QSaveFile>(path)) {
    if (!file_->open(QIODevice::WriteOnly))
        throw VbError(vberr::PathNotFound,
                      QStringLiteral("PDFファイル「%1」を作成できません。%2")
                          .arg(path, whyNotCreated(path, file_->errorString())));
    writer_ = std::make_unique<QPdfWriter>(file_.get());
    writer_->setTitle(title);
    writer_->setCreator(creator);
    writer_->setResolution(1200);
    writer_->setPageLayout(layoutFor({210.0, 297.0}));
}

PdfFileWriter::~PdfFileWriter() {
    // Without commit() the temporary file goes and the target stays as it was.
    if (painter_) painter_->end();
    painter_.reset();
    writer_.reset();
    if (file_) file_->cancelWriting();
}

double PdfFileWriter::beginPage(const QSizeF& paperMm) {
    if (!writer_) throw VbError(vberr::BadFileMode, QStringLiteral("PDFファイルは既に閉じられています。"));
    writer_->setPageLayout(layoutFor(paperMm));
    if (!painter_) {
        painter_ = std::make_unique<QPainter>();
        if (!painter_->begin(writer_.get()))
            throw VbError(vberr::PermissionDenied, QStringLiteral("PDFファイル「%1」に書き込めません。").arg(path_));
    } else {
        writer_->newPage();
    }
    ++pages_;
    return pixelsPerMm(*writer_, paperMm);
}

void PdfFileWriter::addPage(const LayoutDocument& document, int pageNumber) {
    const double scale = beginPage(document.paperSize());
    drawLayoutPage(*painter_, document, pageNumber, scale);
}

void PdfFileWriter::addPage(const RecordedPage& page) {
    const double scale = beginPage(page.paperMm);
    playRecordedPage(*painter_, page, scale);
}

void PdfFileWriter::commit() {
    if (!file_) return;
    if (!painter_) {
        // Nothing was drawn: leave any earlier file untouched.
        writer_.reset();
        file_->cancelWriting();
        file_.reset();
        return;
    }
    painter_->end();
    painter_.reset();
    writer_.reset();
    // The last buffered bytes meet a full disk only when flushed; a commit
    // alone has been seen to keep a file they never reached.
    const bool ok = file_->flush() && file_->commit();
    const QString error = file_->errorString();
    file_.reset();
    if (!ok)
        throw VbError(vberr::PermissionDenied, QStringLiteral("PDFファイル「%1」を保存できません。ディスクの空き容量を確認してください。(%2)")
                                                    .arg(path_, error));
}

void printRecordedPages(QPagedPaintDevice& device, const std::vector<RecordedPage>& pages) {
    if (pages.empty()) return;
    device.setPageLayout(layoutFor(pages.front().paperMm));
    QPainter painter;
    if (!painter.begin(&device))
        throw VbError(vberr::PermissionDenied, QStringLiteral("印刷を開始できません。プリンタの設定を確認してください。"));
    bool first = true;
    for (const RecordedPage& page : pages) {
        if (!first) {
            device.setPageLayout(layoutFor(page.paperMm));
            device.newPage();
        }
        first = false;
        playRecordedPage(painter, page, pixelsPerMm(device, page.paperMm));
    }
    painter.end();
}

}  // namespace kelvary
