// Translation of the Jet SQL dialect that the program's statements are written
// in into SQLite's. Only what differs is touched, and never inside a quoted
// text:
//   #2008/04/01#, #4/1/2008#, #2008/4/1 10:05#   → '2008-04-01', '2008-04-01 10:05:00'
//   IsNull(x)                                     → ((x) IS NULL)
//   True, False                                   → 1, 0 (Booleans are stored 1/0)
//   a & b   (text concatenation)                  → a || b
//   a / b   (always a floating-point quotient)    → a*1.0/b
//   "text"  (a Jet text literal)                  → 'text'
//   a--1    (minus minus one)                     → a- -1 (not an SQLite comment)
// A text is one statement: a ';' may only be followed by blanks, anything else
// raises a VbError, as Jet refused characters after the end of a statement.
#pragma once

#include <QString>

namespace kelvary {

QString translateJetSql(const QString& jetSql);

}  // namespace kelvary
