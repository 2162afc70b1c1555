// Rendering one payload: the symbol through QrSymbol, the text copy in CP932
// exactly as handed in (its own CR LF line ends, nothing added).
#include "qr/frmQRCode.h"

#include "platform/Cp932.h"
#include "platform/VbError.h"
#include "qr/QrSymbol.h"
#include "startup/mdlFunctionStandard.h"

#include <QFile>
#include <QFileInfo>

namespace kelvary {
namespace {

[[noreturn]] void raiseFileError(const QString& path) {
    throw VbError(vberr::PathNotFound, VbError::standardDescription(vberr::PathNotFound) +
                                           QStringLiteral(" (") + path + QLatin1Char(')'));
}

}  // namespace

void frmQRCode::MakeQRCode(const QString& strFileName, const QString& strDataValue) {
    mMakeQRCode(strFileName, strDataValue);
}

void frmQRCode::mMakeQRCode(const QString& strFileName, const QString& strDataValue) {
    try {
        const QByteArray bytes = cp932Encode(strDataValue);
        const std::optional<qr::QrSymbol> symbol = qr::encodeSymbol(bytes);
        if (!symbol) {
            // Nothing may be dropped silently: the run must say which symbol
            // could not be made and how much it held.
            throw VbError(vberr::InvalidProcedureCall,
                          QStringLiteral("QRコードに収まらないデータ量です。（") +
                              QFileInfo(strFileName).completeBaseName() + QStringLiteral("、") +
                              QString::number(bytes.size()) + QStringLiteral("バイト）"));
        }
        if (!qr::symbolImage(*symbol).save(strFileName, "BMP")) raiseFileError(strFileName);
        mSaveText(strFileName, strDataValue);
    } catch (...) {
        ShowErrMsg(QStringLiteral("mMakeQRCode"), 1);
    }
}

void frmQRCode::mSaveText(const QString& strFileName, const QString& strDataValue) {
    const QString path = strFileName + QStringLiteral(".Txt");
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) raiseFileError(path);
    const QByteArray bytes = cp932Encode(strDataValue);
    if (file.write(bytes) != bytes.size()) raiseFileError(path);
}

}  // namespace kelvary
