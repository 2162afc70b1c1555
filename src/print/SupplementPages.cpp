// Filling the supplementary document.
#include "print/SupplementPages.h"

#include "db/mdlFunctionDatabase.h"
#include "platform/VbFormat.h"
#include "print/QrPages.h"
#include "print/frmPrintManager.h"
#include "startup/mdlFunctionApplication.h"
#include "startup/mdlFunctionStandard.h"

namespace kelvary {
namespace {

const QString kCheckMark = QStringLiteral("レ");

QString licenceNumberDigits(const Variant& numberB) {
    if (numberB.isNull() || numberB.text().isEmpty()) return QString();
    return vbFormat(numberB, QStringLiteral("第000000号"));
}

}  // namespace

QString mstrLicenceNumberText(const Variant& prefCode, const Variant& classCode, const Variant& numberA,
                              const Variant& numberB) {
    QString text;
    if (prefCode.isNull()) {
        // No authority known: room to write it in by hand.
        text = QStringLiteral("　　　　　　許可");
    } else {
        text = gvarGetData(QStringLiteral("PrefName"), QStringLiteral("tblPref"),
                           QStringLiteral("PrefID=") + QString::number(prefCode.toLong()), Variant(QString()))
                   .text();
        if (prefCode.toLong() != 0) text += QStringLiteral("知事");
        text += QStringLiteral("許可");
    }
    const QString classText = classCode.isNull() ? QString() : classCode.text();
    if (classText.isEmpty()) {
        text += QStringLiteral("(    - ");
    } else {
        switch (classCode.toLong()) {
            case 1: text += QStringLiteral("( 般 - "); break;
            case 2: text += QStringLiteral("( 特 - "); break;
            case 3: text += QStringLiteral("(般特- "); break;
            default: break;
        }
    }
    // Two digits, as the payload carries it: a number typed full-width is a number.
    const QString a = numberA.isNull() || numberA.text().isEmpty() ? QString() : vbFormat(numberA, QStringLiteral("00"));
    text += (a.isEmpty() ? QStringLiteral("  ") : a) + QStringLiteral(")");
    return text + licenceNumberDigits(numberB);
}

void mWriteSubDoc(frmPrintManager& manager, std::int32_t apDataCode, const qr::QrSymbolList& symbols,
                  const SupplementChoices& choices) {
    const bool earlier = choices.edition == FormEdition::Earlier;
    manager.SetPrintFile(supplementLayoutFile(choices.edition));
    const Recordset record =
        gobjMakeRecordset(QStringLiteral("Select * From tmpAPData Where APDataCode=") + QString::number(apDataCode));
    if (!record.isNothing() && !record.eof()) {
        manager.OutPutData(QStringLiteral("ApplierName"), record[QStringLiteral("ApplierColumnName")]);
        manager.OutPutData(
            QStringLiteral("ApplyNumber"),
            mstrLicenceNumberText(record[QStringLiteral("PrefCode1")], record[QStringLiteral("ClasCtgr1")],
                                  record[QStringLiteral("LcnsNum1A")], record[QStringLiteral("LcnsNum1B")]));
        const QString position = record[QStringLiteral("ContactPosition")].text();
        const QString name = record[QStringLiteral("ContactName")].text();
        manager.OutPutData(QStringLiteral("ChargeName"),
                           position.isEmpty() ? name : position + QStringLiteral("  ") + name);
        manager.OutPutData(QStringLiteral("Tel"), record[QStringLiteral("ContactTel")]);
        manager.OutPutData(QStringLiteral("Fax"), record[QStringLiteral("ContactFax")]);
        manager.OutPutData(QStringLiteral("DocType"), kCheckMark);
        manager.SetVisible(choices.sendResult ? QStringLiteral("CircleProxy") : QStringLiteral("CircleApplier"), true);
        if (earlier) {
            manager.OutPutData(QStringLiteral("CourseNumber"), Variant(static_cast<int>(choices.courseNumber)));
        } else {
            if (choices.courseNumber == 1) manager.OutPutData(QStringLiteral("CourseNumber1"), kCheckMark);
            if (choices.courseNumber == 3) manager.OutPutData(QStringLiteral("CourseNumber3"), kCheckMark);
        }
    }
    const QString section = QStringLiteral("UserInfo");
    for (const QString& key : {QStringLiteral("UserID"), QStringLiteral("UserName"), QStringLiteral("UserTel")})
        manager.OutPutData(key, gvarGetIniData(key, section));

    // Earlier editions make no ApplyHeader; its slot is captioned all the same.
    mPutQRSymbol(manager, 1, qr::symbolOrNamed(symbols, qr::SymbolKind::ApplyHeader));
    mPutQRSymbol(manager, 2, qr::symbolOrNamed(symbols, qr::SymbolKind::ApplyDoc1));
    mPutQRSymbol(manager, 3, qr::symbolOrNamed(symbols, qr::SymbolKind::ApplyDoc2));
    manager.OutPutData(QStringLiteral("VersionNumber"),
                       QStringLiteral("( ") + gstrAppVersion() + QStringLiteral(" )") + QStringLiteral("kv"));
}

void mPrintSubDoc(frmPrintManager& manager, std::int32_t apDataCode, const qr::QrSymbolList& symbols,
                  const SupplementChoices& choices, bool problemMark) {
    trapped(QStringLiteral("mPrintSubDoc"), 0, [&] {
        mWriteSubDoc(manager, apDataCode, symbols, choices);
        manager.EndPage(problemMark);
    });
}

}  // namespace kelvary
