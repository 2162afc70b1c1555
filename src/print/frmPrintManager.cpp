// The print manager's members. Every member that the drivers call runs under
// its own trap and reports through ShowErrMsg with its own name.
#include "print/frmPrintManager.h"

#include "platform/AppObject.h"
#include "platform/Fonts.h"
#include "platform/VbError.h"
#include "platform/VbFormat.h"
#include "print/frmPrintPreview.h"
#include "startup/UserInterface.h"
#include "startup/frmMDIForm.h"
#include "startup/mdlFunctionApplication.h"
#include "startup/mdlFunctionStandard.h"

#include <QFileInfo>
#include <QGuiApplication>
#include <QPrinter>

namespace kelvary {
namespace {

// Said with every report that leaves no new PDF behind: a file still at the
// path is not this run's, and the user must not send it as if it were.
QString earlierFileNote(const QString& path) {
    if (path.trimmed().isEmpty() || !QFileInfo(path).isFile()) return QString();
    return QStringLiteral("\r\n「") + path +
           QStringLiteral("」にあるファイルは以前に作成されたもので、今回の出力ではありません。");
}

// A step of the PDF file itself: its failure carries the note about an
// earlier file at the path.
template <class Body>
void withEarlierFileNote(const QString& path, Body&& body) {
    try {
        body();
    } catch (const VbError& e) {
        throw VbError(e.number(), e.description() + earlierFileNote(path));
    }
}

}  // namespace

namespace {

QString fieldNameWithSuffix(const QString& name, long suffix) {
    return suffix != 0 ? name + QString::number(suffix) : name;
}

}  // namespace

frmPrintManager::frmPrintManager() = default;
frmPrintManager::~frmPrintManager() = default;

bool frmPrintManager::mPdfMode() const { return mOutputMode && writesPdf(*mOutputMode); }

void frmPrintManager::Init() {
    QString fields[3];
    std::optional<OutputMode> mode;
    gCommandGet(fields[0], fields[1], fields[2], mode);
    Init(mode);
}

void frmPrintManager::Init(std::optional<OutputMode> outputMode) {
    std::optional<OutputMode> commandMode;
    gCommandGet(mstrCommand[0], mstrCommand[1], mstrCommand[2], commandMode);
    mOutputMode = outputMode;
    mblnOutputFailed = false;
    mPages.clear();
    mPdf.reset();
    if (!mPdfMode()) return;
    const TrapEnd opened = trapped(QStringLiteral("Init"), 1, [&] {
        withEarlierFileNote(mstrCommand[1], [&] {
            if (mstrCommand[1].trimmed().isEmpty())
                throw VbError(vberr::FileNotFound, QStringLiteral("出力するPDFファイルが指定されていません。"));
            mPdf = std::make_unique<PdfFileWriter>(mstrCommand[1], app::title(),
                                                   QStringLiteral("kelvary ") + gstrAppVersion());
        });
    });
    if (!opened) mblnOutputFailed = true;
}

void frmPrintManager::SetPrintFile(const QString& layoutName) {
    mDocument.reset();
    trapped(QStringLiteral("SetPrintFile"), 1, [&] {
        // A run opens the same few layouts again for every period; each is
        // read and parsed once, and every opening starts from that copy.
        const QString path = gstrProgramInfo(0) + QStringLiteral("PrintFile/") + layoutName;
        auto loaded = mLoadedLayouts.find(path);
        if (loaded == mLoadedLayouts.end()) loaded = mLoadedLayouts.emplace(path, LayoutDocument::load(path)).first;
        LayoutDocument document = loaded->second;
        for (int p = 1; p <= document.pageCount(); ++p) document.page(p).visible = p == 1;
        document.clearData();
        mDocument = std::move(document);
    });
}

LayoutField& frmPrintManager::mField(const QString& fieldName, long suffix, long page, const QString& group) {
    if (!mDocument)
        throw VbError(vberr::InvalidProcedureCall, QStringLiteral("帳票ファイルが開かれていません。"));
    return mDocument->field(static_cast<int>(page), fieldNameWithSuffix(fieldName, suffix), group);
}

void frmPrintManager::OutPutData(const QString& fieldName, const Variant& value, long suffix, long page,
                                 const QString& format, const QString& nullText, const QString& group) {
    trapped(QStringLiteral("OutPutData"), 1, [&] {
        QString text;
        if (value.isNull()) text = nullText;
        else if (!format.isEmpty()) text = vbFormat(value, format);
        else text = value.text();
        // An empty text leaves the layout's own content of the field. With
        // no layout open, opening it failed and was reported once: the
        // members do not report every field again.
        if (text.isEmpty() || !mDocument) return;
        LayoutField& field = mField(fieldName, suffix, page, group);
        field.text = text;
        field.fontName = formFontFamily();
    });
}

void frmPrintManager::SetImage(const QString& fieldName, const QString& imagePath, long suffix, long page) {
    trapped(QStringLiteral("SetImage"), 1, [&] {
        if (!gblnCheckExistFile(imagePath) || !mDocument) return;
        mField(fieldName, suffix, page).imageFile = imagePath;
    });
}

void frmPrintManager::SetVisible(const QString& fieldName, bool visible, long suffix, long page) {
    trapped(QStringLiteral("SetVisible"), 1, [&] {
        if (mDocument) mField(fieldName, suffix, page).visible = visible;
    });
}

void frmPrintManager::SetStrikeLine(const QString& fieldName, bool on, long page) {
    // No trap of its own: a failure reaches the page builder's.
    LayoutField& field = mField(fieldName, 0, page);
    field.strikeLine = on;
    if (on) field.strikeWidth = 5;
}

LayoutField* frmPrintManager::GetObject(const QString& fieldName, long suffix, long page, const QString& group) {
    return &mField(fieldName, suffix, page, group);
}

void frmPrintManager::SelectUnderLine(const QString& fieldName, long style, long suffix, long page) {
    LayoutField& field = mField(fieldName, suffix, page);
    switch (style) {
    case 0:
        field.underline = false;
        break;
    case 1:
        field.underline = true;
        field.underlineKind = UnderlineKind::Dotted;
        field.underlineWidth = 0.5;
        break;
    case 2:
        field.underline = true;
        field.underlineKind = UnderlineKind::Solid;
        field.underlineWidth = 0.5;
        break;
    case 3:
        field.underline = true;
        field.underlineWidth = 3;
        field.underlineKind = UnderlineKind::Double;
        break;
    default:
        break;
    }
}

void frmPrintManager::PrintProxyColumn() {
    trapped(QStringLiteral("mPrintProxyColumn"), 1, [&] {
        const QString section = QStringLiteral("UserInfo");
        const QString address = gvarGetIniData(QStringLiteral("UserAddress"), section).text();
        QString name = gvarGetIniData(QStringLiteral("UserName"), section).text();
        const QString name2 = gvarGetIniData(QStringLiteral("UserName2"), section).text();
        if (!name2.isEmpty()) name += QStringLiteral("  ") + name2;
        const QString text = address + QStringLiteral("　　") + name + QStringLiteral("\r\n") + QStringLiteral("登録") +
                             gvarGetIniData(QStringLiteral("RegistNumber"), section).text() + QStringLiteral("号") +
                             QStringLiteral(" TEL:") + gvarGetIniData(QStringLiteral("UserTel"), section).text() +
                             QStringLiteral(" FAX:") + gvarGetIniData(QStringLiteral("UserFax"), section).text();
        OutPutData(QStringLiteral("ProxyColumn"), text, 0, 1);
    });
}

void frmPrintManager::EndPage(bool problemMark) {
    const QString mark = problemMark ? QStringLiteral(" ※") : QString();
    OutPutData(QStringLiteral("VerifyID"), QStringLiteral("[ID]") + mstrVerifyID + mark, 0, 1);
    // With no layout open, opening it failed and was reported once.
    if (!mDocument) return;
    trapped(QStringLiteral("EndPage"), 1, [&] {
        for (int p = 1; p <= mDocument->pageCount(); ++p) {
            if (!mDocument->page(p).visible) continue;
            if (!mPdfMode()) {
                mPages.push_back(recordLayoutPage(*mDocument, p));
            } else if (mPdf && !mblnOutputFailed) {
                // After the first page that failed, the file is given up: the
                // pages after it are not tried, so the fault is told once.
                try {
                    mPdf->addPage(*mDocument, p);
                } catch (...) {
                    // A page missing from the file: the file is not written.
                    mblnOutputFailed = true;
                    throw;
                }
            }
        }
        mDocument->clearData();
    });
}

void frmPrintManager::PrintNoPreview() {
    if (mPdfMode()) return;
    trapped(QStringLiteral("PrintNoPreview"), 1, [&] { mPrintPreview(); });
}

// Prints every collected page to the run's print target: the system's
// default printer, or the PDF file standing in for it.
void frmPrintManager::mPrintPreview() {
    const PrintTarget target = userInterface().printTarget();
    if (target.isPdfFile()) {
        PdfFileWriter file(target.pdfPath(), app::title(), QStringLiteral("kelvary ") + gstrAppVersion());
        for (const RecordedPage& page : mPages) file.addPage(page);
        file.commit();
        return;
    }
    QPrinter printer(QPrinter::HighResolution);
    if (!printer.isValid() || printer.printerName().isEmpty())
        throw VbError(vberr::PathNotFound, QStringLiteral("通常使うプリンタが設定されていません。"));
    printer.setFullPage(true);
    printer.setDocName(app::title());
    printRecordedPages(printer, mPages);
}

void frmPrintManager::OpenPreview() {
    mPreview = std::make_unique<frmPrintPreview>(mPages, [this] { mPrintPreview(); },
                                                 frmMDIForm::loadedInstance());
    mPreview->setCaptionBase(mstrCaption);
    // Sized for a whole page on the main window's screen, not the main
    // window's area: that shows only part of a page.
    const frmMDIForm* main = frmMDIForm::loadedInstance();
    mPreview->fitToScreen(main ? main->screen() : QGuiApplication::primaryScreen());
    mPreview->mShowPageNumber();
    if (userInterface().isBatch()) {
        // No one is there to press a button: batch mode prints, as the print
        // button would.
        mPreview->action(QStringLiteral("ID_Print"))->trigger();
    } else {
        mPreview->exec();
    }
    mblnCancel = mPreview->isCancelled();
    mPreview.reset();
}

void frmPrintManager::PreviewTitle(const QString& title) {
    mstrCaption = QStringLiteral("プレビュー：") + title;
    if (mPreview) mPreview->setCaptionBase(mstrCaption);
}

void frmPrintManager::EndPrint() {
    mPreview.reset();
    mPages.clear();
    mDocument.reset();
}

void frmPrintManager::gPdfClose() {
    if (!mPdf) return;
    std::unique_ptr<PdfFileWriter> pdf = std::move(mPdf);
    const QString& path = mstrCommand[1];
    const auto notWritten = [&](const QString& because) {
        gMsgbox(0, because + QStringLiteral("、PDFファイル「") + path + QStringLiteral("」は作成しませんでした。") +
                       earlierFileNote(path));
    };
    // Errors the run went on past leave their pages as the run made them, and
    // the file is written; only a page that could not go into the file
    // withholds it, so that no file lacks a page it was given.
    if (mblnOutputFailed) return notWritten(QStringLiteral("エラーが発生したため"));
    if (pdf->pageCount() == 0) return notWritten(QStringLiteral("出力するページがないため"));
    const TrapEnd closed =
        trapped(QStringLiteral("gPdfClose"), 1, [&] { withEarlierFileNote(path, [&] { pdf->commit(); }); });
    if (!closed) mblnOutputFailed = true;
}

}  // namespace kelvary
