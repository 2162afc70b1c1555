// The application form "経営状況分析申請書" of the 2008-04-01 edition: one
// page filled from the application record, either on the printing layout
// (print, preview and the full PDF runs) or on the PDF layout of the
// application-only PDF, whose applicant column has a title column beside it.
#pragma once

#include <QString>
#include <cstdint>

#include "platform/Recordset.h"
#include "startup/FormEdition.h"

namespace kelvary {

class frmPrintManager;

// Fills "ApplyDoc_200804.w30" and ends its page. proxy is the menu's filing
// by an agent; problemMark puts the problem mark on the page's ID line.
void mPrintAP(frmPrintManager& manager, std::int32_t apDataCode, bool proxy, bool problemMark,
              FormEdition edition = FormEdition::Form200804);

// Fills "ApplyDocPdf_200804.w30", ends its page and closes the PDF file.
// Filing by an agent comes from command-line field 3.
void mPdfPrintAP(frmPrintManager& manager, std::int32_t apDataCode, bool problemMark);

// The two texts of the PDF layout's applicant column, built from the
// application record at its current row.
struct ApplicantColumn {
    QString title;
    QString column;
};
ApplicantColumn mPdfApplicantColumn(const Recordset& record, bool byAgent);

// Print and Pdf are the 2008-04-01 edition's layouts; Earlier is "ApplyDoc.w30".
enum class ApplicationLayout { Print, Pdf, Earlier };

// Opens the layout and writes every field of the form without ending the
// page; the builders above end it. Raises VbError when the record is missing.
void mWriteApplicationForm(frmPrintManager& manager, std::int32_t apDataCode, bool byAgent, ApplicationLayout layout);

}  // namespace kelvary
