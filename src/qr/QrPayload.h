// The text grammar every QR payload shares: a header line naming the symbol,
// then numbered records of quoted, cleaned values, each line ending in CR LF.
// The agency's reader parses these texts, so every character here is part of
// an external format. Both generators (current and earlier editions) build
// their payloads from these pieces.
#pragma once

#include "platform/Variant.h"

#include <QList>
#include <QString>

namespace kelvary::qr {

inline const QString kCrLf = QStringLiteral("\r\n");

// A value as payload text: Null becomes empty; CR LF and LF become TAB, the
// double quote an apostrophe, the comma a full stop. A lone CR and
// full-width forms pass unchanged.
QString mstrCleanValue(const Variant& value);

// "[name]","id",count,columns followed by CR LF. The ID is not cleaned.
QString headerLine(const QString& symbolName, const QString& verifyId, long recordCount, long columnCount);

// Appends the header line, or puts it in front when the records were counted
// while they were written.
void mAddHeaderLine(QString& payload, const QString& symbolName, const QString& verifyId, long recordCount,
                    long columnCount, bool inFront);

// number,"v1"[,"v2"[,"v3"[,"v4"]]] followed by CR LF. Values that are not
// passed end the line; at least one value is always written.
void mAddDataLine(QString& payload, long long number, const QList<Variant>& values);

// An amount of yen in thousands, truncated toward zero; Null stays Null.
Variant mvarCalcUnit(const Variant& value);

}  // namespace kelvary::qr
