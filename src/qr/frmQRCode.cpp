// Rendering one payload: the symbol through QrSymbol, the text copy in CP932
// exactly as handed in (its own CR LF line ends, nothing added).
#include "qr/frmQRCode.h"

#include "platform/Cp932.h"
#include "platform/QrSymbol.h"
#include "platform/VbError.h"
#include "startup/mdlFunctionStandard.h"

#include <QFile>
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
// taken for a symbol. The symbols are scratch files of one run, so they need
// to be whole but not durable: no sync to the disk, as QSaveFile would make
// for each of them.
template <typename Write>
void saveWhole(const QString& path, Write&& write) {
    QFile part(path + QStringLiteral(".part"));
    if (!part.open(QIODevice::WriteOnly | QIODevice::Truncate)) throw SaveFailed(path, part.errorString());
    // The last buffered bytes meet a full disk only when flushed.
    const bool written = write(part) && part.flush();
    const QString error = part.errorString();
    part.close();
    if (!written) {
        part.remove();
        throw SaveFailed(path, error);
    }
    QFile::remove(path);
    if (!part.rename(path)) {
        const QString renameError = part.errorString();
        part.remove();
        throw SaveFailed(path, renameError);
    }
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
            saveWhole(strFileName, [&](QIODevice& file) { return image.save(&file, "BMP"); });
            mSaveText(strFileName, strDataValue);
        } catch (const SaveFailed&) {
            mblnCannotSave = true;
            throw;
        }
    });
}

void frmQRCode::mSaveText(const QString& strFileName, const QString& strDataValue) {
    const QByteArray bytes = cp932Encode(strDataValue);
    saveWhole(strFileName + QStringLiteral(".Txt"), [&](QIODevice& file) { return file.write(bytes) == bytes.size(); });
}

}  // namespace kelvary
