// The earlier-edition driver. Until its payloads and pages exist it tells the
// user plainly that this edition cannot be printed yet, rather than printing
// something the agency would reject.
#include "print/clsPrintMain.h"

#include "startup/mdlFunctionStandard.h"

namespace kelvary {

void clsPrintMain::PrintDocument() {
    gMsgbox(0,
            QStringLiteral("この申請書は平成20年4月より前の様式です。\r\n"
                           "この様式の印刷には、このバージョンはまだ対応していません。"),
            QStringLiteral("情報"));
}

}  // namespace kelvary
