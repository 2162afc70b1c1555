// Application routines: Japanese era dates, form editions, the agent text,
// amounts in thousands, piece counts, file versions, the command line and
// the orderly end of the program.
#pragma once

#include "platform/Variant.h"
#include "startup/OutputMode.h"

#include <QString>

#include <optional>

namespace kelvary {

QString gstrEraChar(const Variant& date);
Variant gvarEraDateText(const Variant& date, long width);
Variant gvarConvUnitType(Variant& amount);
long glngCeilDiv(long count, long size);
QString gstrGetFileNameFromFullPath(const QString& path);
QString gstrFSDocMaster(const Variant& dateText);
Variant gvarCalcEnforceDate(const Variant& defaultValue, const Variant& editionCode);
QString gstrMakeProxyString();
QString gstrAppVersion();

// The four command-line fields: the parent program's one text split at "/",
// or, when the program was started with options, the option fields. Field 4
// is given as its output mode; none when the text names no mode this
// program knows.
void gCommandGet(QString& field1, QString& field2, QString& field3, std::optional<OutputMode>& mode);

// Releases the connection and unloads every window; skipQuestion is always set.
void gQuitApplication(bool skipQuestion);
// True once gQuitApplication has run: the run is over and nothing more is shown.
bool gblnQuitRequested();

}  // namespace kelvary
