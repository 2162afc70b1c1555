// Japanese era dates (和暦): which era (元号) a Gregorian date falls in and its
// year within that era, as the printed forms and the checks write them. The
// eras come from ICU's calendar data, so a new era arrives with ICU.
#pragma once

#include <QDate>
#include <QString>

namespace kelvary {

struct JapaneseEra {
    QString initial;  // one Latin letter: "M", "T", "S", "H", "R"
    QString name;     // "明治", "大正", "昭和", "平成", "令和"
    int year = 0;     // the first year of an era is 1, never written 元
};

// Throws VbError 5 for an invalid date or a date before the Meiji era (which
// began 1868-09-08): the eras before it are not the ones the forms print, so
// no text is made up for them.
JapaneseEra japaneseEraOf(const QDate& date);

}  // namespace kelvary
