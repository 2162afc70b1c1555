// A scratch program folder for the check tests: the connection of the run on
// a copy of the built SystemData.mdb, a recording user interface, and one
// application record that passes every rule, which each test then spoils in
// one place with plain SQL.
#pragma once

#include "intake/IntakeHome.h"

#include "checks/ApplicationChecker.h"

#include <QString>


namespace kelvary::test {

class CheckHome : public IntakeHome {
public:
    // An application that satisfies every rule of both editions, modelled on
    // the sample (tests/data/checks/ValidApplication.sql).
    CheckHome() { sqlExecFile(database(), QStringLiteral("checks/ValidApplication.sql")); }

    // Changes the valid record with an SQL SET clause.
    void set(const QString& assignments) {
        exec(database(), ("UPDATE tmpAPData SET " + assignments + " WHERE APDataCode=1").toUtf8().constData());
    }
};

struct CheckResult {
    bool errorFlag = false;
    QString message;
};

inline CheckResult runApplicationCheck(FormEdition edition, std::int32_t code = 1) {
    ApplicationChecker checker(edition);
    checker.setAPDataCode(code);
    checker.setFSDataCheck(true);
    checker.CheckItemSum();
    return {checker.ErrorFlag(), checker.Message()};
}

}  // namespace kelvary::test
