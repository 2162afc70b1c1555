// Whole runs of the program written down as data: the case files of
// tests/data/runs, one case per fault or behaviour a run must keep, each a
// list of steps that prepare a scratch program folder, run the program and
// judge what it left. The format is described in tests/data/runs/README.md.
#pragma once

#include <QList>
#include <QString>

#include <ostream>
#include <utility>
#include <vector>

namespace kelvary::test {

struct RunCase {
    QString name;  // "<file>_<case>", a test name
    QString file;  // the case file, for failure messages
    // The file's opening steps (run before each case), then the case's own,
    // each with its line number.
    QList<std::pair<int, QString>> steps;
};

inline void PrintTo(const RunCase& c, std::ostream* os) { *os << c.name.toStdString(); }

// Every case of every *.cases file in the folder, in file and line order.
std::vector<RunCase> loadRunCases(const QString& folder);

// Prepares a fresh scratch program folder and plays the case's steps on it.
void playRunCase(const RunCase& c);

}  // namespace kelvary::test
