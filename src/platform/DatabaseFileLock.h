// DatabaseFileLock: keeps other programs out of a database file that this
// program opens without SQLite's own per-statement locks. It holds, for as
// long as it lives, the locks SQLite's protocol reads as "a writer is
// committing", so another program's SQLite gets "database is locked" instead
// of reading half-written pages or writing beside us; and it cannot be taken
// while another program has the file open in a transaction, which is how a
// database already in use is noticed. The locks are the platform's process
// locks, so connections inside this same process are not kept out.
#pragma once

#include <QString>

namespace kelvary {

class DatabaseFileLock {
public:
    // Tries to take the lock for up to waitMs milliseconds; see acquired().
    DatabaseFileLock(const QString& path, int waitMs);
    ~DatabaseFileLock();
    DatabaseFileLock(const DatabaseFileLock&) = delete;
    DatabaseFileLock& operator=(const DatabaseFileLock&) = delete;

    // False only when another program held the file for the whole wait.
    bool acquired() const { return acquired_; }

private:
    int fd_ = -1;
    bool acquired_ = false;
};

}  // namespace kelvary
