// The renderer every QR generator owns: one payload in, one symbol image and
// a CP932 copy of the payload out, side by side in Temp. It is never shown;
// it exists so each generator has its own renderer for its lifetime.
#pragma once

#include <QByteArray>
#include <QString>

namespace kelvary {

class frmQRCode {
public:
    // Writes strFileName (the BMP image) and strFileName & ".Txt" (the
    // payload), each whole or not at all. A failure is reported under
    // "mMakeQRCode" and nothing more is written for that symbol; once a file
    // could not be saved (a full disk, a folder that cannot be written), the
    // renderer's later symbols are not attempted, since each would fail and
    // be reported the same way.
    void MakeQRCode(const QString& strFileName, const QString& strDataValue);

private:
    void mMakeQRCode(const QString& strFileName, const QString& strDataValue);
    // The payload as the symbol holds it, already in CP932.
    void mSaveText(const QString& strFileName, const QByteArray& cp932Value);

    bool mblnCannotSave = false;
};

}  // namespace kelvary
