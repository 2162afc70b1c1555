// Rendering one payload: the symbol through QrSymbol, the text copy in CP932
// exactly as handed in (its own CR LF line ends, nothing added).
#include "qr/frmQRCode.h"

#include "platform/Cp932.h"
#include "platform/MonoBmp.h"
#include "platform/QrSymbol.h"
#include "platform/VbError.h"
#include "platform/WholeFile.h"
#include "startup/mdlFunctionStandard.h"

#include <QFileInfo>
#include <QImage>

namespace kelvary {
namespace {

// A symbol file that could not be saved; told apart from a payload too large
// for a symbol, which does not stop the renderer's later symbols.
struct SaveFailed : VbError {
    SaveFailed(const QString& path, const QString& why)
        : VbError(vberr::PermissionDenied,
                  QStringLiteral("QRコードのファイル「") + path +
                      QStringLiteral("」を保存できません。ディスクの空き容量と、作業フォルダーに書き込めるかを確認してください。"
                                     "この書類の残りのQRコードは作成しません。(") +
                      why + QLatin1Char(')')) {}
};

// Writes the file whole or not at all: a half-written image must not be
// taken for a symbol.
void saveWhole(const QString& path, const QByteArray& bytes) {
    const QString failure = writeWholeFile(path, bytes);
    if (!failure.isEmpty()) throw SaveFailed(path, failure);
}

}  // namespace

void frmQRCode::MakeQRCode(const QString& strFileName, const QString& strDataValue) {
    mMakeQRCode(strFileName, strDataValue);
}

void frmQRCode::mMakeQRCode(const QString& strFileName, const QString& strDataValue) {
    if (mblnCannotSave) return;
    trapped(QStringLiteral("mMakeQRCode"), 1, [&] {
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
        const QImage image = qr::symbolImage(*symbol);
        try {
            const QByteArray bmp = monoBmpFile(image);
            if (bmp.isEmpty()) throw SaveFailed(strFileName, QStringLiteral("BMP"));
            saveWhole(strFileName, bmp);
            mSaveText(strFileName, bytes);
        } catch (const SaveFailed&) {
            mblnCannotSave = true;
            throw;
        }
    });
}

void frmQRCode::mSaveText(const QString& strFileName, const QByteArray& cp932Value) {
    saveWhole(strFileName + QStringLiteral(".Txt"), cp932Value);
}

}  // namespace kelvary
