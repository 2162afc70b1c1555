// Fills a list control from one of the master tables: the entry's text is
// what the user reads, its item data (Qt::UserRole) the key of the row, as
// gvarGetComboBoxValue and gLetDataToControl expect.
#pragma once

class QWidget;

namespace kelvary {

// Master lists a control can be filled from.
namespace listkind {
constexpr long Hantoku = 0;  // tblHantoku
constexpr long Pref = 1;     // tblPref, the prefectures
constexpr long Service = 2;  // tblService, the review courses
}  // namespace listkind

// Replaces the entries of a QComboBox or QListWidget by the rows of the
// master table of that kind; afterwards no entry is selected.
void gSetComboBoxData(QWidget* control, long kind);

}  // namespace kelvary
