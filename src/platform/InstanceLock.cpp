// Single-instance lock.
#include "platform/InstanceLock.h"

namespace kelvary {

InstanceLock::InstanceLock(const QString& folder)
    : lock_(std::make_unique<QLockFile>(folder + QStringLiteral("/kelvary.lock"))) {
    // A lock left by a crashed run is taken over: QLockFile checks the owner's pid.
    lock_->setStaleLockTime(0);
    acquired_ = lock_->tryLock(0);
}

}  // namespace kelvary
