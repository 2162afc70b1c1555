// Common services every routine uses: message boxes of five kinds, the error
// display, the progress window, the settings file UserData.ini, the program
// folder, small value helpers and the list-control helpers.
#pragma once

#include "platform/ErrorTrap.h"
#include "platform/Variant.h"

#include <QString>

#include <optional>
#include <utility>

class QWidget;

namespace kelvary {

// Message box kinds: 0 information, 1 question, 2 warning (No preselected),
// 3 critical, 4 cancel confirmation. True only for Yes.
bool gMsgbox(int kind, const QString& message = QString(), const QString& title = QString());

// Reports the error in flight (call it from a catch block). Mode 0: the caller
// goes on; 1: the caller gives up; 2: the user is asked whether to go on.
// True only in mode 2 when the box was shown and the user chose Yes.
bool ShowErrMsg(const QString& place, int mode);

// A routine's error trap: runs body; an error leaving it is reported with
// ShowErrMsg(place, mode) and the routine gives empty. The form without an
// empty result tells whether the body ran through (see TrapEnd).
template <class Place, class Body>
TrapResult<Body> trapped(const Place& place, int mode, TrapResult<Body> empty, Body&& body) {
    return trapWith(ShowErrMsg, place, mode, std::move(empty), std::forward<Body>(body));
}
template <class Place, class Body>
TrapEnd trapped(const Place& place, int mode, Body&& body) {
    return trapWith(ShowErrMsg, place, mode, std::forward<Body>(body));
}

// The composed text of an error report, exactly as the box shows it.
QString errorReportText(const QString& place, int mode, long number, const QString& description,
                        const std::optional<int>& position);

// Progress window: 0 show with text, 1 close, 2 change the text.
void gMsgForm(int mode, const QString& text = QString());

Variant gvarGetIniData(const QString& key, const QString& section);
void gWriteIniData(const QString& key, const Variant& value, const QString& section);
QString userDataIniPath();

QString gstrProgramInfo(int kind);
bool gblnCheckExistFile(const QString& path, int attributes = 0);
constexpr int vbDirectory = 16;
void gSetHourglass(const Variant& flag);

Variant gvarCheckData(int mode, const Variant& value, const Variant& defaultValue);
long glngLen(const Variant& value);

Variant gvarGetComboBoxValue(QWidget* control);
void gLetDataToControl(QWidget* control, const Variant& value, int controlKind);

}  // namespace kelvary
