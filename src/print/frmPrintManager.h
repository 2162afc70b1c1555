// The print manager: the one place that fills layout documents and sends
// their pages on. Page builders open a layout, write fields by page, name,
// suffix and group, and end the page; the manager hands every ended page to
// the sink the output mode chose at Init — the collected pages of the preview
// and printer, or a PDF file.
#pragma once

#include "platform/LayoutDocument.h"
#include "platform/LayoutRenderer.h"
#include "platform/PageOutput.h"
#include "platform/Variant.h"
#include "startup/OutputMode.h"

#include <QString>

#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace kelvary {

class frmPrintPreview;

class frmPrintManager {
public:
    frmPrintManager();
    ~frmPrintManager();
    frmPrintManager(const frmPrintManager&) = delete;
    frmPrintManager& operator=(const frmPrintManager&) = delete;

    void Init();
    // As Init, with the output mode the driver decided (the earlier edition
    // always prints, whatever the command line says).
    void Init(std::optional<OutputMode> outputMode);
    void setVerifyID(const QString& seed) { mstrVerifyID = seed; }

    void SetPrintFile(const QString& layoutName);
    void OutPutData(const QString& fieldName, const Variant& value, long suffix = 0, long page = 1,
                    const QString& format = QString(), const QString& nullText = QString(),
                    const QString& group = QString());
    void SetImage(const QString& fieldName, const QString& imagePath, long suffix = 0, long page = 1);
    void SetVisible(const QString& fieldName, bool visible, long suffix = 0, long page = 1);
    void SetStrikeLine(const QString& fieldName, bool on, long page = 1);
    // The field (or a group's sub-field) for direct use; valid until the next
    // SetPrintFile. Raises VbError for a name the layout lacks.
    LayoutField* GetObject(const QString& fieldName, long suffix = 0, long page = 1,
                           const QString& group = QString());
    void SelectUnderLine(const QString& fieldName, long style, long suffix = 0, long page = 1);
    void PrintProxyColumn();
    void EndPage(bool problemMark = false);

    void PrintNoPreview();
    void OpenPreview();
    void PreviewTitle(const QString& title);
    void EndPrint();
    void gPdfClose();
    bool IsCancel() const { return mblnCancel; }

    // What has been sent on so far, for the driver's messages and for tests.
    int collectedPageCount() const { return static_cast<int>(mPages.size()); }
    int pdfPageCount() const { return mPdf ? mPdf->pageCount() : 0; }
    const std::vector<RecordedPage>& collectedPages() const { return mPages; }
    // The open document, or nullptr before SetPrintFile.
    const LayoutDocument* document() const { return mDocument ? &*mDocument : nullptr; }

    // The preview window while it is open (tests drive it from a timer).
    frmPrintPreview* previewWindow() const { return mPreview.get(); }

private:
    LayoutField& mField(const QString& fieldName, long suffix, long page, const QString& group = QString());
    void mPrintPreview();
    bool mPdfMode() const;

    std::optional<LayoutDocument> mDocument;
    std::map<QString, LayoutDocument> mLoadedLayouts;
    std::vector<RecordedPage> mPages;
    std::unique_ptr<PdfFileWriter> mPdf;
    std::unique_ptr<frmPrintPreview> mPreview;
    QString mstrCommand[3];
    // The output mode decided at Init; the earlier driver always prints.
    std::optional<OutputMode> mOutputMode;
    // The PDF itself failed (not made, a page not added, not saved): the
    // file is not written.
    bool mblnOutputFailed = false;
    bool mblnCancel = false;
    QString mstrCaption;
    QString mstrVerifyID;
};

}  // namespace kelvary
