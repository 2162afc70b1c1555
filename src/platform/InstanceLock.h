// The previous-instance test: a lock file in the program folder, held for the
// life of the run and released by the operating system if the program dies.
#pragma once

#include <QLockFile>
#include <QString>

#include <memory>

namespace kelvary {

class InstanceLock {
public:
    explicit InstanceLock(const QString& folder);
    // False when another running instance holds the lock.
    bool acquired() const { return acquired_; }

private:
    std::unique_ptr<QLockFile> lock_;
    bool acquired_ = false;
};

}  // namespace kelvary
