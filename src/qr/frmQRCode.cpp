// Rendering one payload: the symbol through QrSymbol, the text copy in CP932
// exactly as handed in (its own CR LF line ends, nothing added).
#include "qr/frmQRCode.h"

#include "platform/Cp932.h"
#include "platform/VbError.h"
#include "qr/QrSymbol.h"
#include "startup/mdlFunctionStandard.h"

#include <QFileInfo>
#include <QImage>
#include <QSaveFile>

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
template <typename Write>
void saveWhole(const QString& path, Write&& write) {
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) throw SaveFailed(path, file.errorString());
    // The last buffered bytes meet a full disk only when flushed; a commit
    // alone has been seen to keep a file they never reached.
    if (!write(file) || !file.flush() || !file.commit()) throw SaveFailed(path, file.errorString());
}

}  // namespace

void frmQRCode::MakeQRCode(const QString& strFileName, const QString& strDataValue) {
    mMakeQRCode(strFileName, strDataValue);
}

void frmQRCode::mMakeQRCode(const QString& strFileName, const QString& strDataValue) {
    if (mblnCannotSave) return;
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
        const QImage image = qr::symbolImage(*symbol);
        saveWhole(strFileName, [&](QIODevice& file) { return image.save(&file, "BMP"); });
        mSaveText(strFileName, strDataValue);
    } catch (const SaveFailed&) {
        mblnCannotSave = true;
        ShowErrMsg(QStringLiteral("mMakeQRCode"), 1);
    } catch (...) {
        ShowErrMsg(QStringLiteral("mMakeQRCode"), 1);
    }
}

void frmQRCode::mSaveText(const QString& strFileName, const QString& strDataValue) {
    const QByteArray bytes = cp932Encode(strDataValue);
    saveWhole(strFileName + QStringLiteral(".Txt"), [&](QIODevice& file) { return file.write(bytes) == bytes.size(); });
}

}  // namespace kelvary
