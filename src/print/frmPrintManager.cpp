// The print manager's members. Every member that the drivers call runs under
// its own trap and reports through ShowErrMsg with its own name.
#include "print/frmPrintManager.h"

#include "platform/AppObject.h"
#include "platform/Fonts.h"
#include "platform/VbError.h"
#include "platform/VbFormat.h"
#include "print/frmPrintPreview.h"
#include "startup/CommandLine.h"
#include "startup/UserInterface.h"
#include "startup/frmMDIForm.h"
#include "startup/mdlFunctionApplication.h"
#include "startup/mdlFunctionStandard.h"

#include <QFileInfo>
#include <QGuiApplication>
#include <QPrinter>

namespace kelvary {
namespace {

// Thrown where a page is filled while no layout is open: opening it has
// failed and was reported once, so this manager's members do not report
// every field again; a caller that meets it reports it as any error.
struct LayoutNotOpen : VbError {
    LayoutNotOpen() : VbError(vberr::InvalidProcedureCall, QStringLiteral("帳票ファイルが開かれていません。")) {}
};

void reportFailure(const QString& place, int mode) {
    try {
        throw;
    } catch (const LayoutNotOpen&) {
    } catch (...) {
        ShowErrMsg(place, mode);
    }
}

// Said with every report that leaves no new PDF behind: a file still at the
// path is not this run's, and the user must not send it as if it were.
QString earlierFileNote(const QString& path) {
    if (path.trimmed().isEmpty() || !QFileInfo(path).isFile()) return QString();
    return QStringLiteral("\r\n「") + path +
           QStringLiteral("」にあるファイルは以前に作成されたもので、今回の出力ではありません。");
}

// The failure of the PDF itself, reported with the note about an earlier file.
void reportPdfFailure(const QString& place, const QString& path) {
    try {
        throw;
    } catch (const VbError& e) {
        try {
            throw VbError(e.number(), e.description() + earlierFileNote(path));
        } catch (...) {
            ShowErrMsg(place, 1);
        }
    } catch (...) {
        ShowErrMsg(place, 1);
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
    try {
        std::optional<OutputMode> commandMode;
        gCommandGet(mstrCommand[0], mstrCommand[1], mstrCommand[2], commandMode);
        mOutputMode = outputMode;
        mblnOutputFailed = false;
        mPages.clear();
        mPdf.reset();
    } catch (...) {
        reportFailure(QStringLiteral("Init"), 1);
        return;
    }
    if (!mPdfMode()) return;
    try {
        if (mstrCommand[1].trimmed().isEmpty())
            throw VbError(vberr::FileNotFound, QStringLiteral("出力するPDFファイルが指定されていません。"));
        mPdf = std::make_unique<PdfFileWriter>(mstrCommand[1], app::title(),
                                               QStringLiteral("kelvary ") + gstrAppVersion());
    } catch (...) {
        mblnOutputFailed = true;
        reportPdfFailure(QStringLiteral("Init"), mstrCommand[1]);
    }
}

void frmPrintManager::SetPrintFile(const QString& layoutName) {
    try {
        mDocument.reset();
        LayoutDocument document = LayoutDocument::load(gstrProgramInfo(0) + QStringLiteral("PrintFile/") + layoutName);
        for (int p = 1; p <= document.pageCount(); ++p) document.page(p).visible = p == 1;
        document.clearData();
        mDocument = std::move(document);
    } catch (...) {
        reportFailure(QStringLiteral("SetPrintFile"), 1);
    }
}

LayoutField& frmPrintManager::mField(const QString& fieldName, long suffix, long page, const QString& group) {
    if (!mDocument)
        throw LayoutNotOpen{};
    return mDocument->field(static_cast<int>(page), fieldNameWithSuffix(fieldName, suffix), group);
}

void frmPrintManager::OutPutData(const QString& fieldName, const Variant& value, long suffix, long page,
                                 const QString& format, const QString& nullText, const QString& group) {
    try {
        QString text;
        if (value.isNull()) text = nullText;
        else if (!format.isEmpty()) text = vbFormat(value, format);
        else text = value.text();
        // An empty text leaves the layout's own content of the field.
        if (text.isEmpty()) return;
        LayoutField& field = mField(fieldName, suffix, page, group);
        field.text = text;
        field.fontName = formFontFamily();
    } catch (...) {
        reportFailure(QStringLiteral("OutPutData"), 1);
    }
}

void frmPrintManager::SetImage(const QString& fieldName, const QString& imagePath, long suffix, long page) {
    try {
        if (!gblnCheckExistFile(imagePath)) return;
        mField(fieldName, suffix, page).imageFile = imagePath;
    } catch (...) {
        reportFailure(QStringLiteral("SetImage"), 1);
    }
}

void frmPrintManager::SetVisible(const QString& fieldName, bool visible, long suffix, long page) {
    try {
        mField(fieldName, suffix, page).visible = visible;
    } catch (...) {
        reportFailure(QStringLiteral("SetVisible"), 1);
    }
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
    try {
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
    } catch (...) {
        reportFailure(QStringLiteral("mPrintProxyColumn"), 1);
    }
}

void frmPrintManager::EndPage(bool problemMark) {
    try {
        const QString mark = problemMark ? QStringLiteral(" ※") : QString();
        OutPutData(QStringLiteral("VerifyID"), QStringLiteral("[ID]") + mstrVerifyID + mark, 0, 1);
        if (!mDocument)
            throw LayoutNotOpen{};
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
    } catch (...) {
        reportFailure(QStringLiteral("EndPage"), 1);
    }
}

void frmPrintManager::PrintNoPreview() {
    try {
        if (mPdfMode()) return;
        mPrintPreview();
    } catch (...) {
        reportFailure(QStringLiteral("PrintNoPreview"), 1);
    }
}

// Prints every collected page: to the system's default printer, or in batch
// mode with --print-to into that PDF file.
void frmPrintManager::mPrintPreview() {
    const QString printTo = batchOptions().printTo;
    if (!printTo.isEmpty()) {
        PdfFileWriter file(printTo, app::title(), QStringLiteral("kelvary ") + gstrAppVersion());
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
    try {
        if (!mPdf) return;
        std::unique_ptr<PdfFileWriter> pdf = std::move(mPdf);
        // Errors the run went on past leave their pages as the run made
        // them, and the file is written; only a page that could not go into
        // the file withholds it, so that no file lacks a page it was given.
        if (mblnOutputFailed) {
            gMsgbox(0, QStringLiteral("エラーが発生したため、PDFファイル「") + mstrCommand[1] +
                           QStringLiteral("」は作成しませんでした。") + earlierFileNote(mstrCommand[1]));
            return;
        }
        if (pdf->pageCount() == 0) {
            gMsgbox(0, QStringLiteral("出力するページがないため、PDFファイル「") + mstrCommand[1] +
                           QStringLiteral("」は作成しませんでした。") + earlierFileNote(mstrCommand[1]));
            return;
        }
        pdf->commit();
    } catch (...) {
        mblnOutputFailed = true;
        reportPdfFailure(QStringLiteral("gPdfClose"), mstrCommand[1]);
    }
}

}  // namespace kelvary
